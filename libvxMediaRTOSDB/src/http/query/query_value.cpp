#include "libvxMediaRTOSDB/src/http/query/query_value.h"

#include <charconv>

#include "libvxMediaRTOSDB/src/http/query/find_value.h"
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/query_string.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

int rejectKey(const char* message, const QueryKey& key) {
    UTIL_LOG(UTIL_LOG_ERROR, message, key.name);
    return HTTP_BAD_REQUEST;
}

int checkLookup(int result, const QueryKey& key, const QueryValue& value) {
    if (result == QUERY_NOT_FOUND) {
        return key.absent ? rejectKey(key.absent, key) : HTTP_OK;
    }
    if (result == QUERY_NO_ROOM) {
        return rejectValue(HTTP_BAD_REQUEST, key.tooLong, key, value);
    }
    if (result < 0) {
        UTIL_LOG(UTIL_LOG_ERROR, "Internal failure (%d) while processing %s\n", result, key.name);
        return HTTP_INTERNAL_ERROR;
    }
    if (value.text.empty() && key.empty) {
        return rejectKey(key.empty, key);
    }
    return HTTP_OK;
}

}  // namespace

QueryValue readQueryValue(std::string_view query, const QueryKey& key, std::span<char> buffer) {
    const int result = findValue(query, key.name, buffer, 0);
    QueryValue value = {.status = HTTP_OK, .text = buffer.data()};
    value.status = checkLookup(result, key, value);
    return value;
}

bool parseNumber(std::string_view digits, uint32_t* number) {
    constexpr size_t kMaxDigits = 10;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, *number);
    return digits.size() <= kMaxDigits && stop == end && error == std::errc();
}

int readQueryNumber(std::string_view query, const QueryKey& key, uint32_t* number) {
    char buffer[kQueryValueSize];
    const QueryValue value = readQueryValue(query, key, buffer);
    if (value.status != HTTP_OK || value.text.empty()) {
        return value.status;
    }
    if (!parseNumber(value.text, number)) {
        return rejectValue(HTTP_BAD_REQUEST, kInvalidValue, key, value);
    }
    return checkNotRepeated(query, key);
}

int checkNotRepeated(std::string_view query, const QueryKey& key) {
    char ignored[1];
    if (findValue(query, key.name, ignored, 1) == QUERY_NOT_FOUND) {
        return HTTP_OK;
    }
    return rejectKey(key.repeated, key);
}

int rejectValue(int status, const char* message, const QueryKey& key, const QueryValue& value) {
    UTIL_LOG(UTIL_LOG_ERROR, message, key.name, value.text.data());
    return status;
}

#include <mediacheckd/vxMediaRTOSDB/query_string.h>

#include <strings.h>

#include <algorithm>
#include <cstddef>

#include "libvxMediaRTOSDB/src/http/query/find_value.h"

namespace {

// Returns the value of a hexadecimal digit, -1 for any other character.
int hexValue(char digit) {
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    if (digit >= 'a' && digit <= 'f') {
        return digit - 'a' + 10;
    }
    if (digit >= 'A' && digit <= 'F') {
        return digit - 'A' + 10;
    }
    return -1;
}

// Returns the first character that the source stands for and takes it off the source.
char takeCharacter(std::string_view* source, bool plusToSpace) {
    const char first = source->front();
    if (first == '%' && source->size() >= 3) {
        const int high = hexValue((*source)[1]);
        const int low = hexValue((*source)[2]);
        if (high >= 0 && low >= 0) {
            source->remove_prefix(3);
            return static_cast<char>(high << 4 | low);
        }
    }
    source->remove_prefix(1);
    return first == '+' && plusToSpace ? ' ' : first;
}

int decode(std::string_view source, std::span<char> destination, bool plusToSpace) {
    if (!destination.empty()) {
        destination[0] = '\0';
    }
    if (source.empty()) {
        return 0;
    }
    if (destination.size() < 2) {
        return -1;
    }
    size_t length = 0;
    while (!source.empty() && length + 1 < destination.size()) {
        destination[length++] = takeCharacter(&source, plusToSpace);
    }
    destination[length] = '\0';
    return source.empty() ? static_cast<int>(length) : -1;
}

bool isKeyAt(std::string_view query, size_t position, std::string_view key) {
    return (position == 0 || query[position - 1] == '&') && query[position + key.size()] == '=' &&
           strncasecmp(query.data() + position, key.data(), key.size()) == 0;
}

}  // namespace

int findValue(std::string_view query, std::string_view key, std::span<char> value, int skip) {
    value[0] = '\0';
    for (size_t position = 0; position + key.size() < query.size(); ++position) {
        if (!isKeyAt(query, position, key) || skip-- > 0) {
            continue;
        }
        const std::string_view rest = query.substr(position + key.size() + 1);
        const int length = decode(rest.substr(0, rest.find('&')), value, true);
        if (length >= 0) {
            return length;
        }
        return length == -1 ? QUERY_NO_ROOM : QUERY_INTERNAL;
    }
    return QUERY_NOT_FOUND;
}

int urlDecode(const char* source, int sourceLength, char* destination, int destinationSize,
              int plusToSpace) {
    const size_t length = source && sourceLength > 0 ? static_cast<size_t>(sourceLength) : 0;
    const size_t size =
        destination && destinationSize > 0 ? static_cast<size_t>(destinationSize) : 0;
    return decode({source, length}, {destination, size}, plusToSpace != 0);
}

int findQueryValue(const char* query, int queryLength, const char* key, char* value,
                   int valueSize) {
    return findQueryValueN(query, queryLength, key, value, valueSize, 0);
}

int findQueryValueN(const char* query, int queryLength, const char* key, char* value, int valueSize,
                    int skip) {
    if (!value || valueSize < 1) {
        return QUERY_NO_ROOM;
    }
    value[0] = '\0';
    if (!query || queryLength < 1 || !key) {
        return QUERY_NOT_FOUND;
    }
    return findValue({query, static_cast<size_t>(queryLength)}, key,
                     {value, static_cast<size_t>(valueSize)}, std::max(skip, 0));
}

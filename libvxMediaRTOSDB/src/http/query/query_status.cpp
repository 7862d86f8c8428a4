#include <mediacheckd/vxMediaRTOSDB/query_status.h>

#include <string_view>

#include "libvxMediaRTOSDB/src/http/query/query_value.h"
#include "libvxMediaRTOSDB/src/log/util_assert.h"
#include <mediacheckd/vxMediaRTOSDB/http_status.h>

namespace {

// Returns the filter that writes the status, or the filter itself when it has none.
uint32_t settingFilter(uint32_t filter) {
    switch (filter) {
        case eDBFILTER_T_UPLOAD:
            return eDBFILTER_T_UPLOAD_SET_STATUS;
        case eDBFILTER_T_GET_UPLOAD:
            return eDBFILTER_T_SET_UPLOAD;
        default:
            return filter;
    }
}

}  // namespace

int parseQueryStatus(const char* query, int queryLength, QuerySettings* pSettings) {
    UTIL_ASSERT(query);
    UTIL_ASSERT(pSettings);
    if (queryLength < 1) {
        return HTTP_OK;
    }

    const std::string_view text(query, static_cast<size_t>(queryLength));
    const uint32_t filter = settingFilter(pSettings->filter);
    const bool wanted = filter != pSettings->filter;
    const QueryKey key = {
        .name = "status",
        .empty = wanted ? kRequiredFieldEmpty : nullptr,
        .repeated = kRequiredFieldRepeated,
    };
    char buffer[kQueryValueSize];
    const QueryValue value = readQueryValue(text, key, buffer);
    if (value.status != HTTP_OK || value.text.empty()) {
        return value.status;
    }
    if (wanted) {
        uint32_t number = 0;
        if (!parseNumber(value.text, &number)) {
            return rejectValue(HTTP_BAD_REQUEST, kInvalidValue, key, value);
        }
        pSettings->newUploadStatus = number;
        pSettings->filter = filter;
    }
    return checkNotRepeated(text, key);
}

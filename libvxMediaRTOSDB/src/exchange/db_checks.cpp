#include "libvxMediaRTOSDB/src/exchange/db_checks.h"

#include <mediacheckd/vxMediaRTOSDB/util_log.h>

void correctCount(const db_request_header& request, db_response_header* response,
                  uint32_t logLevel) {
    const uint32_t returned = response->count_returned;
    const uint32_t requested = request.request_count;
    if (returned <= requested) {
        return;
    }
    UTIL_LOG(logLevel,
             "command %d requested %d, response returned %d, setting response returned to %d\n",
             static_cast<int>(request.command_type), static_cast<int>(requested),
             static_cast<int>(returned), static_cast<int>(requested));
    response->count_returned = requested;
}

void checkToken(uint32_t responseToken, const db_request_header& request) {
    if (responseToken != request.token) {
        UTIL_LOG(UTIL_LOG_WARN, "Tokens don't match %d %d", static_cast<int>(responseToken),
                 static_cast<int>(request.token));
    }
}

uint32_t itemsOfPage(const db_list_response_header& page, uint32_t startingIndex) {
    const uint32_t returned = page.header.count_returned;
    const uint32_t left = page.total_entries - startingIndex;
    if (returned <= left) {
        return returned;
    }
    UTIL_LOG(UTIL_LOG_WARN, "%d total_entries, but %d starting_index with %d count_returned\n",
             uint32_t{page.total_entries}, startingIndex, returned);
    UTIL_LOG(UTIL_LOG_WARN, "truncating to %d items in this page\n", left);
    return left;
}

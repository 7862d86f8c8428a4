#include "libvxMediaRTOSDB/src/exchange/db_checks.h"

#include "vcore/base/signed_word.h"
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
             signedWord(request.command_type), signedWord(requested), signedWord(returned),
             signedWord(requested));
    response->count_returned = requested;
}

void checkToken(uint32_t responseToken, const db_request_header& request) {
    if (responseToken != request.token) {
        UTIL_LOG(UTIL_LOG_WARN, "Tokens don't match %d %d", signedWord(responseToken),
                 signedWord(request.token));
    }
}

uint32_t itemsOfPage(const db_list_response_header& page, uint32_t startingIndex) {
    const uint32_t returned = page.header.count_returned;
    const uint32_t left = page.total_entries - startingIndex;
    if (returned <= left) {
        return returned;
    }
    UTIL_LOG(UTIL_LOG_WARN, "%d total_entries, but %d starting_index with %d count_returned\n",
             signedWord(page.total_entries), signedWord(startingIndex), signedWord(returned));
    UTIL_LOG(UTIL_LOG_WARN, "truncating to %d items in this page\n", signedWord(left));
    return left;
}

// The checks that the queries share once a response has come.
#pragma once

#include <cstdint>

#include <mediacheckd/vxMediaRTOSDB/db_requests.h>
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>

// Tells whether the result of an exchange, negative on failure, covers a response header.
constexpr bool holdsResponseHeader(int bytesReceived) {
    return bytesReceived >= static_cast<int>(sizeof(db_response_header));
}

// Sets count_returned to request_count when it is greater, and logs that at the given level.
void correctCount(const db_request_header& request, db_response_header* response,
                  uint32_t logLevel);

// Logs a response token that differs from the request's.
void checkToken(uint32_t responseToken, const db_request_header& request);

// Returns how many items of a list page that starts at an index count: no more than there are from
// there on in all, by the distance in 32 bits. A cut is logged. No response holds 2^31 items: who
// counts with a sign takes that many for none, who does not meets the response's end first.
[[nodiscard]] uint32_t itemsOfPage(const db_list_response_header& page, uint32_t startingIndex);

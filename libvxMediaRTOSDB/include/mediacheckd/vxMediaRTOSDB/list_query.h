// The list query: one page of the media database's items.
#pragma once

#include <stdint.h>

#include <mediacheckd/vxMediaRTOSDB/nodiscard.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

// Fetches one page, on a connection of its own.
// request_count: number of items wanted; count_returned of the response is cut to it.
// starting_index: index of the first item, from 0.
// token: any pointer; its low 32 bits tag the request.
// response: 1500 bytes; receives a db_list_response_header and the items after it. Bytes that did
// not come are 0.
// list_options: DbListOption bits. query_options: DbQueryOption bits.
// pBytesRead: receives the result of the exchange, the number of bytes received or a negative
// number; left alone when no connection can be made.
// Returns 0, also for a failure status or a wrong token (both are logged); -1 when the database
// cannot be reached; -3 for a response too short to hold a header.
MEDIACHECKD_NODISCARD int queryRTOSdb(uint32_t request_count, uint32_t starting_index,
                                      const void* token, void* response, uint32_t list_options,
                                      uint32_t query_options, int* pBytesRead);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

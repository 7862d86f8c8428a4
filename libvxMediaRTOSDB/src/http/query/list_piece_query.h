// The query of a piece of the media list: the keys of a media list but "folder", "files" and
// "status", and "start", "count", "from" and "to".
#pragma once

#include <cstdint>

#include <mediacheckd/vxMediaRTOSDB/query_settings.h>

struct ListPieceQuery {
    QuerySettings settings;
    uint32_t start = 0;   // index of the first item
    uint32_t count = 50;  // items of the database, listed or not
    uint32_t from = 0;    // the first and the last creation time, in seconds since 1970
    uint32_t to = 0;      // 0 for no end
};

// Returns HTTP_OK, or the status of the check that failed, which is logged.
// query: zero-terminated.
[[nodiscard]] int parseListPieceQuery(const char* query, ListPieceQuery* piece);

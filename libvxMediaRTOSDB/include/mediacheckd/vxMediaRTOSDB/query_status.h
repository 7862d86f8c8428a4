// The "status" key, which both kinds of query have.
#pragma once

#include <mediacheckd/vxMediaRTOSDB/query_settings.h>

extern "C" {
#pragma GCC visibility push(default)

// Reads the upload status to write, for a query of an upload data set: sets newUploadStatus and
// turns the filter into the one that writes. With any other filter the value is ignored. Neither
// pointer may be null: the process ends.
// query: queryLength characters, none when it is below 1. pSettings: parsed so far; may have
// changed when the query is rejected.
// Returns 200; 400 for a value that is too long, or that is not empty and comes with a second one,
// and for an upload data set also for a value that is empty or no number of one to ten digits that
// fits 32 bits. Each rejection is logged.
[[nodiscard]] int parseQueryStatus(const char* query, int queryLength, QuerySettings* pSettings);

#pragma GCC visibility pop
}

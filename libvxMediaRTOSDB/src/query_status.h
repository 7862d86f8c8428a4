// The "status" key, which both kinds of query have.
#pragma once

#include "libvxMediaRTOSDB/src/query_settings.h"

extern "C" {
#pragma GCC visibility push(default)

// Reads the upload status to write, for a query of an upload data set: sets newUploadStatus and
// turns the filter into the one that writes. With any other filter the value is ignored.
// query: queryLength characters, may be null when queryLength is 0.
// pSettings: parsed so far, not null.
// Returns 200, or 400 for a value that is too long, empty, no number of one to ten digits that
// fits 32 bits, or given twice.
[[nodiscard]] int parseQueryStatus(const char* query, int queryLength, QuerySettings* pSettings);

#pragma GCC visibility pop
}

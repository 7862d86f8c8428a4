// The query of one file's metadata: its keys are "t" (data set), "p" (DIRECTORY/FILE) and "status".
#pragma once

#include <mediacheckd/vxMediaRTOSDB/query_settings.h>

extern "C" {
#pragma GCC visibility push(default)

// Parses a metadata query. Neither pointer may be null: the process ends.
// query: zero-terminated, without the "?". pSettings: zeroed first.
// Returns 200; 400 for a "t" or "p" that is missing or empty, a value that is too long or invalid,
// a key given twice, and what parseQueryStatus rejects; 404 for a file that is no medium by its
// name; 501 for an unknown data set. Each rejection is logged.
[[nodiscard]] int parseMetadataQuery(const char* query, QuerySettings* pSettings);

#pragma GCC visibility pop
}

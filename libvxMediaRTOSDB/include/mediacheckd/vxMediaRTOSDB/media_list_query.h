// The query of a media list: its keys are "f" (data set), "fields", "folder", "files" and "status".
#pragma once

#include <mediacheckd/vxMediaRTOSDB/query_settings.h>

extern "C" {
#pragma GCC visibility push(default)

// Parses a media-list query; an empty one asks for the legacy fields of everything. Neither
// pointer may be null: the process ends.
// query: zero-terminated, without the "?". pSettings: zeroed first.
// Returns 200; 400 for an empty "f" or "fields", a value that is too long or invalid, "f", "fields"
// or "folder" given twice, "folder" and "files" without each other, and what parseQueryStatus
// rejects; 501 for an unknown data set. Each rejection is logged. Unknown field names are no
// rejection: the settings collect them up to the first one that does not fit, which is logged.
[[nodiscard]] int parseMediaListQuery(const char* query, QuerySettings* pSettings);

#pragma GCC visibility pop
}

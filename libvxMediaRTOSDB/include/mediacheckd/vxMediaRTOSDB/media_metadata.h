// The metadata of one file, as an HTTP response with a JSON object.
#pragma once

#include <mediacheckd/vxMediaRTOSDB/media_db_output.h>
#include <mediacheckd/vxMediaRTOSDB/query_settings.h>
#include <mediacheckd/vxMediaRTOSDB/rtos_connection.h>

extern "C" {
#pragma GCC visibility push(default)

// Answers a metadata query (metadata_query.h) on standard output, which it flushes.
// outputHandle: may be null. query: zero-terminated, not null: the process ends.
// The status is 200; the parser's; 404 when the card has no identity or the database does not know
// the file; 500 when memory, the database or the space for the object fail; 501 for a data set
// that the kind of file does not have; 503 when the database is not ready. Only 200 has a body.
// Returns 0 for status 200, else -1.
[[nodiscard]] int generateMetadata(void* outputHandle, const char* query);

// Appends the object of the data set "videoinfo" to the output's entry buffer.
// pOutput: constructed. pRtosConn: open. pSettings: must ask for that data set, else the process
// ends. No pointer may be null: the process ends.
// Returns an HTTP status as generateMetadata has it; the object is complete with 200 only.
[[nodiscard]] int generateMetadataVideoInfo(vxMediaDBOutput* pOutput, rtosConnection* pRtosConn,
                                            const QuerySettings* pSettings);

#pragma GCC visibility pop
}

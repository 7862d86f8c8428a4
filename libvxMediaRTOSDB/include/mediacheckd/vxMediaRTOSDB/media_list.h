// The media lists, as HTTP responses with a JSON document.
#pragma once

#include <stdint.h>

#include <mediacheckd/vxMediaRTOSDB/nodiscard.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

// Answers a media-list query (media_list_query.h) on standard output, which it flushes: lists the
// files of the query's data set by directory, with the keys that its fields select. A query of the
// data set "gumi" lists the files that it names instead.
// outputHandle: may be null. query: zero-terminated, not null: the process ends.
// The status is 200; the parser's; 404 when the card has no identity; 500 when memory, the database
// or the space for the list fail; for the data set "gumi" also 400 when folder or files are missing
// or misplaced or the folder has more than 8 characters, and 503 when the database is not ready.
// A response that the parser does not reject has a document, without files unless the status is
// 200; except for the data set "gumi", a failure of memory has none.
// Returns 0 for status 200, else -1; also -1, with nothing printed, for a gumi query that does not
// begin with "f=gumi".
MEDIACHECKD_NODISCARD int generateMediaList(void* outputHandle, const char* query);

// Answers a query for a piece of the media list on standard output, which it flushes. Its keys are
// "f" and "fields" of a media list, and numbers: "start", the index of the first item, from 0;
// "count", 1 to 200 items of the database, 50 without it, of which those of another kind are not
// listed; "from" and "to", the first and the last creation time in seconds since 1970, 0 for none.
// The document tells "session", the database's session, "total", how many items there are, and
// "next", the start of the next piece; without "next" this was the last one. outputHandle: may be
// null. query: zero-terminated, not null: the process ends. The status is 200; 400 for a number of
// another form, a "count" that is none of these, a key given twice and the data set "gumi"; 501 for
// an unknown data set; 404 when the card has no identity; 500 when memory, the database or the
// space for the piece fail. Returns 0 for status 200, else -1.
MEDIACHECKD_NODISCARD int generateListPiece(void* outputHandle, const char* query);

// Lists one range of the database on standard output, which it flushes, with a fixed set of keys.
// handle: ignored. maxRequests: pages to fetch at most; below 1 the list is empty.
// itemsPerRequest: items of a page; 0 asks once and lists nothing. startingIndex: index of the
// first item, from 0. listOptions: DbListOption bits; with LIST_OPTION_VIDEO_GROUPING each video
// group is listed as its members, which have neither GUMIs nor "DNE": the database's answers about
// members carry none. queryOptions: DbQueryOption bits, which select the kinds listed.
// parameterCount: 0 to 2; with parameters the database is asked with the command that takes them.
// A negative count acts as 0, one above 2 as 2.
// parameters: that many; null with a count above 0: the process ends.
// Returns 0 for status 200, else -1 (status 500). A card without identity has the identity "0".
MEDIACHECKD_NODISCARD int dbGetPagedList(void* handle, int maxRequests, uint32_t itemsPerRequest,
                                         uint32_t startingIndex, uint32_t listOptions,
                                         uint32_t queryOptions, int parameterCount,
                                         const uint32_t* parameters);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

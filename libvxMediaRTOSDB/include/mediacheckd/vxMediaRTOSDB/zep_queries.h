// The queries of automatic upload: pages of items, the media histogram, the upload status.
//
// Each call opens and closes its own connection and blocks until the answer is there or the
// exchange has failed. Callbacks run on the caller's thread before the call returns.
#pragma once

#include <stdint.h>

#include <mediacheckd/vxMediaRTOSDB/nodiscard.h>
#include <mediacheckd/vxMediaRTOSDB/zep_item.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

// Fetches one page of the main list and hands its items and their files to the callbacks.
// count: number of items wanted. startIndex: index of the first one, from 0.
// token: any pointer; its low 32 bits tag the request.
// itemCallback, fileCallback: either may be null; each gets its context.
// sessionId: receives the database's session id. totalEntries: receives the number of items in the
// whole list; may be null. Both are written whenever a response header came,
// as 0 when the response ends before them.
// Returns the number of items delivered when the response ends inside a later one. Else the number
// that the response counts, no more than were wanted: fewer are delivered when the whole list has
// no more, none when the response ends inside the first one. Or a negative number: -1 when the
// database cannot be reached or the page is invalid (items before the fault are delivered), -3 for
// a response too short to hold a header.
MEDIACHECKD_NODISCARD int dbGetZEPItems(uint32_t count, uint32_t startIndex, void* token,
                                        zep_item_callback itemCallback, void* itemContext,
                                        zep_file_callback fileCallback, void* fileContext,
                                        uint32_t* sessionId, uint32_t* totalEntries);

// As dbGetZEPItems, over the list of session files, whose indices start at 0 as well.
MEDIACHECKD_NODISCARD int dbGetZEPSessionFileList(uint32_t count, uint32_t startIndex, void* token,
                                                  zep_item_callback itemCallback, void* itemContext,
                                                  zep_file_callback fileCallback, void* fileContext,
                                                  uint32_t* sessionId, uint32_t* totalEntries);

// Writes the upload status of one file.
// dirName: 8 characters. fileName: 12 characters. token: as for dbGetZEPItems.
// Returns 0, also when the database answered too short or with a failure (both are logged), or a
// negative number when a name has another length or the database cannot be reached.
MEDIACHECKD_NODISCARD int dbSetZEPUploadStatus(const char* dirName, const char* fileName,
                                               uint32_t uploadStatus, void* token);

// Fetches the media histogram.
// token: as for dbGetZEPItems. ignored: neither read nor written.
// histogram: receives 32 counts; left alone when the answer is shorter than a response header.
// Bytes of counts that did not come are 0.
// Returns 0, also after a short answer or a failure status (both are logged), or -1 when the
// database cannot be reached.
MEDIACHECKD_NODISCARD int dbGetMediaHistogram(void* token, void* ignored, uint32_t* histogram);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

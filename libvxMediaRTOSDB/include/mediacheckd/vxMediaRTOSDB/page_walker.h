// Walks the items of a list page.
#pragma once

#include <stdint.h>

#include <mediacheckd/vxMediaRTOSDB/nodiscard.h>
#include <mediacheckd/vxMediaRTOSDB/zep_item.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

// Hands each item of a page, and each of its files, to the callbacks. A group has one file for each
// present member; the durations of grouped videos are asked of the database member by member.
// response: the page, a db_list_response_header and its items. bytesRead: bytes received, at most
// 1500; nothing beyond them is read.
// startingIndex: index of the page's first item. A page that starts before total_entries ends there
// at the latest; 2^31 items and more count as none.
// itemCallback, fileCallback: either may be null; each gets its context.
// Returns 0 after the last item; the number of items walked when the response ends inside the next
// one; -1 for an item of unknown content type or with a mask larger than any response.
MEDIACHECKD_NODISCARD int processQueryResponse(const void* response, int bytesRead,
                                               uint32_t startingIndex,
                                               zep_item_callback itemCallback, void* itemContext,
                                               zep_file_callback fileCallback, void* fileContext);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

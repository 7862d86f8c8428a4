// Fetches one page of an open list query.
#include "libvxMediaRTOSDB/src/log/elapsed_time.h"
#include "libvxMediaRTOSDB/src/records/record_reader.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/list_query.h>
#include <mediacheckd/vxMediaRTOSDB/page_walker.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>
#include <mediacheckd/vxMediaRTOSDB/zep_queries.h>

namespace {

// What the two lists of upload candidates differ in.
struct List {
    uint32_t listOptions;
    uint32_t queryOptions;
    const char* timeFormat;
};

constexpr List kItems = {
    .listOptions = LIST_OPTION_VIDEO_GROUPING,
    .queryOptions = 0xFFFFFF00u & ~RTOS_DB_QUERY_METADATA_SESSION_FILES,
    .timeFormat = "dbGetZEPItems time %lu sec, %lu usec, count_returned:%d\n",
};
constexpr List kSessionFiles = {
    .listOptions = 0,
    .queryOptions = 0x2000u | RTOS_DB_QUERY_METADATA_SESSION_FILES,
    .timeFormat = "dbGetZEPSessionFileList time %lu sec, %lu usec, count_retured:%d\n",
};

int fetchPage(const List& list, uint32_t count, uint32_t startIndex, void* token,
              zep_item_callback itemCallback, void* itemContext, zep_file_callback fileCallback,
              void* fileContext, uint32_t* sessionId, uint32_t* totalEntries) {
    const ElapsedTime elapsed;
    uint8_t response[kResponseBufferSize];
    int bytesRead = 0;
    int result = queryRTOSdb(count, startIndex, token, response, list.listOptions,
                             list.queryOptions, &bytesRead);
    if (result < 0) {
        return result;
    }

    const std::span received(response, static_cast<size_t>(bytesRead));
    const auto header = wordsReceived<db_list_response_header>(received);
    *sessionId = header.session_id;
    if (totalEntries) {
        *totalEntries = header.total_entries;
    }
    result = processQueryResponse(response, bytesRead, startIndex, itemCallback, itemContext,
                                  fileCallback, fileContext);
    if (result != 0) {
        return result;
    }

    const int returned = signedWord(header.header.count_returned);
    const ElapsedTime::Reading time = elapsed.read();
    UTIL_LOG(UTIL_LOG_DEBUG, list.timeFormat, time.seconds, time.microseconds, returned);
    return returned;
}

}  // namespace

int dbGetZEPItems(uint32_t count, uint32_t startIndex, void* token, zep_item_callback itemCallback,
                  void* itemContext, zep_file_callback fileCallback, void* fileContext,
                  uint32_t* sessionId, uint32_t* totalEntries) {
    return fetchPage(kItems, count, startIndex, token, itemCallback, itemContext, fileCallback,
                     fileContext, sessionId, totalEntries);
}

int dbGetZEPSessionFileList(uint32_t count, uint32_t startIndex, void* token,
                            zep_item_callback itemCallback, void* itemContext,
                            zep_file_callback fileCallback, void* fileContext, uint32_t* sessionId,
                            uint32_t* totalEntries) {
    return fetchPage(kSessionFiles, count, startIndex, token, itemCallback, itemContext,
                     fileCallback, fileContext, sessionId, totalEntries);
}

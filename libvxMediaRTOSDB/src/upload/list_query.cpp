#include <mediacheckd/vxMediaRTOSDB/list_query.h>

#include "libvxMediaRTOSDB/src/exchange/db_checks.h"
#include "libvxMediaRTOSDB/src/exchange/rtos_connection_guard.h"
#include "libvxMediaRTOSDB/src/records/db_log.h"
#include "libvxMediaRTOSDB/src/records/record_reader.h"
#include "libvxMediaRTOSDB/src/records/request_header.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

int queryRTOSdb(uint32_t request_count, uint32_t starting_index, const void* token, void* response,
                uint32_t list_options, uint32_t query_options, int* pBytesRead) {
    RtosConnectionGuard connection;
    if (connection.result() < 0) {
        return -1;
    }

    db_list_request request;
    fillHeader(&request.header, DB_CMD_LIST, request_count, token);
    request.starting_index = starting_index;
    request.list_options = list_options;
    request.query_options = query_options;
    logRequest(request);
    UTIL_LOG(UTIL_LOG_DEBUG,
             "queryRTOSdb() req->command_type:%d, list_options:0x%x,%d, query_options:0x%x,%d",
             signedWord(DB_CMD_LIST), list_options, signedWord(list_options), query_options,
             signedWord(query_options));

    *pBytesRead = rtosCall(connection.get(), &request, sizeof request, response);
    if (*pBytesRead < 0) {
        UTIL_LOG(UTIL_LOG_ERROR, "*pBytesRead=%d, RTOS transaction failed.\n", *pBytesRead);
        return *pBytesRead;
    }
    if (!holdsResponseHeader(*pBytesRead)) {
        UTIL_LOG(UTIL_LOG_ERROR, "*pBytesRead=%d < sizeof db_response_header:%d, failed, ret -3\n",
                 *pBytesRead, static_cast<int>(sizeof(db_response_header)));
        return -3;
    }

    auto* list = static_cast<db_list_response_header*>(response);
    if (list->header.status != 0) {
        UTIL_LOG(UTIL_LOG_WARN, "error on IPC received, status %d\n",
                 signedWord(list->header.status));
    }
    logResponse(*list);
    correctCount(request.header, &list->header, UTIL_LOG_WARN);
    connection.close();
    checkToken(list->header.token, request.header);
    return 0;
}

#include "libvxMediaRTOSDB/src/files/status_query.h"

#include "libvxMediaRTOSDB/src/exchange/db_checks.h"
#include "libvxMediaRTOSDB/src/log/util_assert.h"
#include "libvxMediaRTOSDB/src/records/db_log.h"
#include "libvxMediaRTOSDB/src/records/name_fields.h"
#include "libvxMediaRTOSDB/src/records/request_header.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

// Returns the HTTP status for the status that the database reports.
int httpStatus(uint32_t status) {
    switch (status) {
        case 0:
            return HTTP_OK;
        case 1:
        case 2:
            return HTTP_UNAVAILABLE;
        case 4:
            return HTTP_NOT_FOUND;
        default:
            UTIL_LOG(UTIL_LOG_ERROR, "error on IPC received, exiting, status %d\n",
                     signedWord(status));
            return saysNotFound(status) ? HTTP_NOT_FOUND : HTTP_INTERNAL_ERROR;
    }
}

// request: a request that names a file; its header and its names are filled here.
template <typename Request>
Response ask(rtosConnection* pRtosConn, DbCommand command, const char* pDirName,
             const char* pFileName, Request request, void* pRespBuf) {
    UTIL_ASSERT(pRtosConn);
    UTIL_ASSERT(pDirName);
    UTIL_ASSERT(pFileName);
    UTIL_ASSERT(pRespBuf);

    fillHeader(&request.header, command, 1, &request);
    fillField(request.file.dir_name, pDirName);
    fillField(request.file.file_name, pFileName);
    logRequest(request);

    const int received = rtosCall(pRtosConn, &request, sizeof request, pRespBuf);
    if (!holdsResponseHeader(received)) {
        return {discardResponse(received), {}, received >= 0};
    }
    auto* header = static_cast<db_response_header*>(pRespBuf);
    logResponse(*header);
    checkToken(header->token, request.header);
    correctCount(request.header, header, UTIL_LOG_WARN);
    return {httpStatus(header->status),
            {static_cast<const uint8_t*>(pRespBuf), static_cast<size_t>(received)},
            true};
}

}  // namespace

Response askAboutFile(rtosConnection* pRtosConn, DbCommand command, const char* pDirName,
                      const char* pFileName, void* pRespBuf) {
    return ask(pRtosConn, command, pDirName, pFileName, db_file_request{}, pRespBuf);
}

Response writeUploadStatus(rtosConnection* pRtosConn, const char* pDirName, const char* pFileName,
                           uint32_t uploadStatus, void* pRespBuf) {
    db_upload_status_request request = {};
    request.upload_status = uploadStatus;
    return ask(pRtosConn, DB_CMD_WRITE_UPLOAD_STATUS, pDirName, pFileName, request, pRespBuf);
}

int discardResponse(int bytesReceived) {
    UTIL_LOG(UTIL_LOG_ERROR, "Invalid response size (%d), discarding\n", bytesReceived);
    return HTTP_INTERNAL_ERROR;
}

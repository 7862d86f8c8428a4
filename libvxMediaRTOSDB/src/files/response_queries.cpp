#include <mediacheckd/vxMediaRTOSDB/response_queries.h>

#include <span>

#include "libvxMediaRTOSDB/src/files/status_query.h"
#include "libvxMediaRTOSDB/src/log/util_assert.h"
#include "libvxMediaRTOSDB/src/records/record_reader.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

int sizeOf(const Response& response) {
    return static_cast<int>(response.bytes.size());
}

// Finds the item record behind the response header. Returns an HTTP status; *item is set with 200.
int findItem(const Response& response, const db_item_record** item) {
    if (response.status != HTTP_OK) {
        return response.status;
    }
    const auto* answer = RecordReader(response.bytes).read<db_item_response>();
    if (!answer) {
        return discardResponse(sizeOf(response));
    }
    if (answer->item.content_type == DB_CONTENT_TYPE_UNKNOWN_FILE) {
        UTIL_LOG(UTIL_LOG_WARN, "Invalid content type (-1), inferring FILE NOT_FOUND\n");
        return HTTP_NOT_FOUND;
    }
    *item = &answer->item;
    return HTTP_OK;
}

// Finds the video specific information whose highlights have come too; null when there is none.
const db_video_specific_info* findVideoInfo(const Response& response) {
    RecordReader reader(response.bytes, sizeof(db_item_response));
    const auto* info = reader.read<db_video_specific_info>();
    const bool complete = info && reader.readArray<u32le>(info->highlight_count);
    return complete ? info : nullptr;
}

}  // namespace

int findVideo(const Response& response, const db_item_record** item,
              const db_video_specific_info** info) {
    const db_item_record* found = nullptr;
    const int status = findItem(response, &found);
    if (!found) {
        return status;
    }
    const auto* foundInfo = findVideoInfo(response);
    if (!foundInfo && isOrdinaryVideo(found->content_type)) {
        return discardResponse(sizeOf(response));
    }
    *item = found;
    *info = foundInfo;
    return HTTP_OK;
}

int getContentInfoResponse(rtosConnection* pRtosConn, const char* pDirName, const char* pFileName,
                           void* pRespBuf, const db_item_record** ppInfo) {
    UTIL_ASSERT(ppInfo);
    *ppInfo = nullptr;
    const Response response =
        askAboutFile(pRtosConn, DB_CMD_CONTENT_INFO, pDirName, pFileName, pRespBuf);
    return findItem(response, ppInfo);
}

int getVideoSpecificInfoResponse(rtosConnection* pRtosConn, const char* pDirName,
                                 const char* pFileName, void* pRespBuf,
                                 const db_item_record** ppInfo,
                                 const db_video_specific_info** ppVideoInfo) {
    UTIL_ASSERT(ppInfo);
    UTIL_ASSERT(ppVideoInfo);
    *ppInfo = nullptr;
    *ppVideoInfo = nullptr;
    return findVideo(
        askAboutFile(pRtosConn, DB_CMD_VIDEO_SPECIFIC_INFO, pDirName, pFileName, pRespBuf), ppInfo,
        ppVideoInfo);
}

int getMoreInfoResponse(rtosConnection* pRtosConn, const char* pDirName, const char* pFileName,
                        void* pRespBuf, const db_more_info** ppMoreInfo) {
    UTIL_ASSERT(ppMoreInfo);
    *ppMoreInfo = nullptr;
    const Response response =
        askAboutFile(pRtosConn, DB_CMD_MORE_INFO, pDirName, pFileName, pRespBuf);
    if (response.status != HTTP_OK) {
        return response.status;
    }

    const auto* answer = RecordReader(response.bytes).read<db_more_info_response>();
    if (!answer) {
        return discardResponse(sizeOf(response));
    }
    *ppMoreInfo = &answer->more_info;
    return HTTP_OK;
}

int getFileGUMIResponse(rtosConnection* pRtosConn, const char* pDirName, const char* pFileName,
                        void* pRespBuf, const db_item_record** ppInfo, const db_gumi** ppGUMI,
                        const db_gumi** ppPGUMI) {
    UTIL_ASSERT(ppInfo);
    UTIL_ASSERT(ppGUMI);
    UTIL_ASSERT(ppPGUMI);
    *ppInfo = nullptr;
    *ppGUMI = nullptr;
    *ppPGUMI = nullptr;
    const Response response =
        askAboutFile(pRtosConn, DB_CMD_FILE_GUMI, pDirName, pFileName, pRespBuf);
    const int status = findItem(response, ppInfo);
    if (!*ppInfo) {
        return status;
    }

    auto* answer = static_cast<db_file_gumi_response*>(pRespBuf);
    if (response.bytes.size() < offsetof(db_file_gumi_response, parent_gumi)) {
        UTIL_LOG(UTIL_LOG_WARN, "Insufficient response size (%d), invalidating GUMIs\n",
                 sizeOf(response));
        answer->gumi = {};
    }
    if (response.bytes.size() < sizeof *answer) {
        answer->parent_gumi = {};
    }
    *ppGUMI = &answer->gumi;
    if ((*ppInfo)->attributes & ITEM_ATTRIBUTE_PARENT_GUMI) {
        *ppPGUMI = &answer->parent_gumi;
    }
    return HTTP_OK;
}

int getWriteUploadStatusResponse(rtosConnection* pRtosConn, const char* pDirName,
                                 const char* pFileName, void* pRespBuf, uint32_t uploadStatus) {
    return writeUploadStatus(pRtosConn, pDirName, pFileName, uploadStatus, pRespBuf).status;
}

// The frame of the response queries: one exchange on the caller's connection, the checks that every
// response goes through, and the database's status as an HTTP status.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>
#include <mediacheckd/vxMediaRTOSDB/db_requests.h>
#include <mediacheckd/vxMediaRTOSDB/rtos_connection.h>

// A response and the HTTP status that stands for it. With HTTP_OK it holds at least the response
// header.
struct Response {
    int status;  // HttpStatus
    std::span<const uint8_t> bytes;
    bool answered;  // false when the exchange failed in all its tries
};

// Tells whether the status of a response means that the database has none of the files asked for.
constexpr bool saysNotFound(uint32_t status) {
    return status == 3 || status == 4;
}

// Asks about one file by a command whose request names the file and nothing else.
[[nodiscard]] Response askAboutFile(rtosConnection* pRtosConn, DbCommand command,
                                    const char* pDirName, const char* pFileName, void* pRespBuf);

[[nodiscard]] Response writeUploadStatus(rtosConnection* pRtosConn, const char* pDirName,
                                         const char* pFileName, uint32_t uploadStatus,
                                         void* pRespBuf);

// Finds the item record of a response about a video, and its video specific information when that
// came with all its highlights; both are left alone otherwise. Returns an HTTP status.
[[nodiscard]] int findVideo(const Response& response, const db_item_record** item,
                            const db_video_specific_info** info);

// Logs a response of a size that no answer has. Returns HTTP_INTERNAL_ERROR.
[[nodiscard]] int discardResponse(int bytesReceived);

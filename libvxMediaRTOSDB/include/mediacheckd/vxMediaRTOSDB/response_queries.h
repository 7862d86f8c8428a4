// Questions about one file, asked on the caller's connection and answered by an HTTP status.
//
// Each exchanges one request for one response through rtosCall, with its retries, and leaves the
// connection open. What it finds are pointers into the caller's response buffer, valid until the
// buffer is used again; a pointer is null unless the status is 200. No pointer argument may be
// null: the process ends.
//
// pDirName: its first 8 characters count. pFileName: its first 12 characters count.
// pRespBuf: 1500 bytes.
//
// Each returns 200; 404 when the database does not know the file; 503 when the database is not
// ready; 500 when the exchange fails, the answer is too short or the database reports a failure.
#pragma once

#include <cstdint>

#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>
#include <mediacheckd/vxMediaRTOSDB/rtos_connection.h>

extern "C" {
#pragma GCC visibility push(default)

// Finds the item record of a file.
[[nodiscard]] int getContentInfoResponse(rtosConnection* pRtosConn, const char* pDirName,
                                         const char* pFileName, void* pRespBuf,
                                         const db_item_record** ppInfo);

// Finds the item record and the video specific information of a file; the highlights follow the
// latter. *ppVideoInfo is null, with status 200, for a content type above 3 whose answer does not
// hold the information and all its highlights.
[[nodiscard]] int getVideoSpecificInfoResponse(rtosConnection* pRtosConn, const char* pDirName,
                                               const char* pFileName, void* pRespBuf,
                                               const db_item_record** ppInfo,
                                               const db_video_specific_info** ppVideoInfo);

// Finds the picture geometry and frame rate of a file.
[[nodiscard]] int getMoreInfoResponse(rtosConnection* pRtosConn, const char* pDirName,
                                      const char* pFileName, void* pRespBuf,
                                      const db_more_info** ppMoreInfo);

// Finds the item record and the GUMI of a file, and its parent GUMI when it has one (else null).
// A GUMI that did not wholly come reads as zero.
[[nodiscard]] int getFileGUMIResponse(rtosConnection* pRtosConn, const char* pDirName,
                                      const char* pFileName, void* pRespBuf,
                                      const db_item_record** ppInfo, const db_gumi** ppGUMI,
                                      const db_gumi** ppPGUMI);

// Writes the upload status of a file.
[[nodiscard]] int getWriteUploadStatusResponse(rtosConnection* pRtosConn, const char* pDirName,
                                               const char* pFileName, void* pRespBuf,
                                               uint32_t uploadStatus);

#pragma GCC visibility pop
}

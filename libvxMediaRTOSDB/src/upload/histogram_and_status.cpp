// The two queries of automatic upload that are one exchange and no page: histogram and upload
// status. They share a frame; both take an answer that is too short or a failure for done.
#include <algorithm>
#include <optional>
#include <span>

#include "libvxMediaRTOSDB/src/exchange/retry_pause.h"
#include "libvxMediaRTOSDB/src/exchange/rtos_connection_guard.h"
#include "libvxMediaRTOSDB/src/records/db_log.h"
#include "libvxMediaRTOSDB/src/records/name_fields.h"
#include "libvxMediaRTOSDB/src/records/record_reader.h"
#include "libvxMediaRTOSDB/src/records/request_header.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/vxMediaRTOSDB/util_log.h>
#include <mediacheckd/vxMediaRTOSDB/zep_queries.h>

namespace {

// The record that answered a request; bytes of it that did not come are 0. Without one, result is
// what the query returns: negative when the exchange failed, 0 when less than a header came.
template <typename Record>
struct Answer {
    int result = 0;
    std::optional<Record> record;
};

template <typename Record, typename Request>
Answer<Record> ask(const Request& request) {
    RtosConnectionGuard connection;
    if (connection.result() < 0) {
        UTIL_LOG(UTIL_LOG_ERROR, "Failed to ininialize IPC: %d\n", -1);
        return {-1, std::nullopt};
    }
    logRequest(request);
    uint8_t buffer[kResponseBufferSize];
    const int received = rtosCall(connection.get(), &request, sizeof request, buffer);
    if (received < 0) {
        UTIL_LOG(UTIL_LOG_ERROR, "RTOS transaction failed.\n");
        return {received, std::nullopt};
    }
    const std::span response(buffer, static_cast<size_t>(received));
    const auto* header = RecordReader(response).read<db_response_header>();
    if (!header) {
        retryPause();
        UTIL_LOG(UTIL_LOG_WARN, "%d bytes received, expecting %ld, retrying\n", received,
                 static_cast<long>(sizeof *header));
        return {};
    }
    logResponse(*header);
    if (header->status != 0) {
        retryPause();
        UTIL_LOG(UTIL_LOG_WARN, "error on IPC received, retrying, status %d\n",
                 signedWord(header->status));
    }
    return {0, bytesReceived<Record>(response)};
}

}  // namespace

int dbSetZEPUploadStatus(const char* dirName, const char* fileName, uint32_t uploadStatus,
                         void* token) {
    if (!hasLength(dirName, kDirNameSize) || !hasLength(fileName, kFileNameSize)) {
        return -1;
    }
    db_upload_status_request request;
    fillHeader(&request.header, DB_CMD_WRITE_UPLOAD_STATUS, 1, token);
    fillField(request.file.dir_name, dirName);
    fillField(request.file.file_name, fileName);
    request.upload_status = uploadStatus;

    return ask<db_response_header>(request).result;
}

int dbGetMediaHistogram(void* token, void*, uint32_t* histogram) {
    db_histogram_request request;
    fillHeader(&request.header, DB_CMD_MEDIA_HISTOGRAM, 1, token);

    const auto [result, response] = ask<db_histogram_response>(request);
    if (response) {
        std::ranges::copy(response->buckets, histogram);
    }
    return result;
}

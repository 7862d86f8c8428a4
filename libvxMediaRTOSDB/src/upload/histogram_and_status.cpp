// The two queries of automatic upload that are one exchange and no page: histogram and upload
// status. They share a frame; both take an answer that is too short or a failure for done.
#include "libvxMediaRTOSDB/src/exchange/db_checks.h"
#include "libvxMediaRTOSDB/src/exchange/retry_pause.h"
#include "libvxMediaRTOSDB/src/exchange/rtos_connection_guard.h"
#include "libvxMediaRTOSDB/src/records/db_log.h"
#include "libvxMediaRTOSDB/src/records/name_fields.h"
#include "libvxMediaRTOSDB/src/records/record_reader.h"
#include "libvxMediaRTOSDB/src/records/request_header.h"
#include <mediacheckd/vxMediaRTOSDB/util_log.h>
#include <mediacheckd/vxMediaRTOSDB/zep_queries.h>

namespace {

// Returns the number of bytes received, which may be too few, or a negative number.
template <typename Request>
int exchange(const Request& request, uint8_t (&response)[kResponseBufferSize]) {
    RtosConnectionGuard connection;
    if (connection.result() < 0) {
        UTIL_LOG(UTIL_LOG_ERROR, "Failed to ininialize IPC: %d\n", -1);
        return -1;
    }
    logRequest(request);
    const int received = rtosCall(connection.get(), &request, sizeof request, response);
    if (received < 0) {
        UTIL_LOG(UTIL_LOG_ERROR, "RTOS transaction failed.\n");
        return received;
    }
    if (!holdsResponseHeader(received)) {
        retryPause();
        UTIL_LOG(UTIL_LOG_WARN, "%d bytes received, expecting %ld, retrying\n", received,
                 static_cast<long>(sizeof(db_response_header)));
        return received;
    }
    const auto* header = RecordReader(response).read<db_response_header>();
    logResponse(*header);
    if (header->status != 0) {
        retryPause();
        UTIL_LOG(UTIL_LOG_WARN, "error on IPC received, retrying, status %d\n",
                 uint32_t{header->status});
    }
    return received;
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

    uint8_t response[kResponseBufferSize];
    const int received = exchange(request, response);
    return received < 0 ? received : 0;
}

int dbGetMediaHistogram(void* token, void*, uint32_t* histogram) {
    db_histogram_request request;
    fillHeader(&request.header, DB_CMD_MEDIA_HISTOGRAM, 1, token);

    uint8_t response[kResponseBufferSize];
    const int received = exchange(request, response);
    if (received < 0) {
        return received;
    }
    if (holdsResponseHeader(received)) {
        const auto* counts = RecordReader(response).read<db_histogram_response>();
        for (size_t i = 0; i < kHistogramBuckets; ++i) {
            histogram[i] = counts->buckets[i];
        }
    }
    return 0;
}

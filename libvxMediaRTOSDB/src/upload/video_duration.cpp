#include "libvxMediaRTOSDB/src/upload/video_duration.h"

#include <array>

#include "libvxMediaRTOSDB/src/exchange/rtos_connection_guard.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/response_queries.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

void getVideoDuration(const char* dirName, const char* fileName, uint32_t* durationMs) {
    *durationMs = 0;
    RtosConnectionGuard connection;
    if (connection.result() < 0) {
        UTIL_LOG(UTIL_LOG_ERROR, "rtosConnectionCtor ret < 0");
        return;
    }
    std::array<uint8_t, kResponseBufferSize> buffer;
    const db_item_record* item = nullptr;
    const db_video_specific_info* info = nullptr;
    const int status = getVideoSpecificInfoResponse(connection.get(), dirName, fileName,
                                                    buffer.data(), &item, &info);
    if (status == HTTP_OK) {
        // Without its highlights the record is not handed out, but its duration is there.
        const auto& record =
            *reinterpret_cast<const db_video_specific_info*>(&buffer[sizeof(db_item_response)]);
        *durationMs = record.duration_ms;
    }
}

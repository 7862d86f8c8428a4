#include "libvxMediaRTOSDB/src/upload/video_duration.h"

#include <array>

#include "libvxMediaRTOSDB/src/exchange/rtos_connection_guard.h"
#include "libvxMediaRTOSDB/src/files/status_query.h"
#include "libvxMediaRTOSDB/src/records/record_reader.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

bool getVideoDuration(const char* dirName, const char* fileName, uint32_t* durationMs) {
    *durationMs = 0;
    RtosConnectionGuard connection;
    if (connection.result() < 0) {
        UTIL_LOG(UTIL_LOG_ERROR, "rtosConnectionCtor ret < 0");
        return true;
    }
    std::array<uint8_t, kResponseBufferSize> buffer;
    const db_item_record* item = nullptr;
    const db_video_specific_info* info = nullptr;
    const Response response = askAboutFile(connection.get(), DB_CMD_VIDEO_SPECIFIC_INFO, dirName,
                                           fileName, buffer.data());
    // What is no ordinary video may come without its highlights: the duration counts all the same.
    if (findVideo(response, &item, &info) == HTTP_OK) {
        *durationMs =
            wordsReceived<db_video_specific_info>(response.bytes, sizeof(db_item_response))
                .duration_ms;
    }
    return response.answered;
}

// The upload status and what follows from it.
#include "simulator/answers/answers.h"

namespace simulator {

Answer answerWriteUploadStatus(Database& database, Request request) {
    const auto write = readRecord<db_upload_status_request>(request);
    if (!write) {
        return {};
    }
    const bool written = database.writeUploadStatus(write->file, write->upload_status);
    return {statusReply(write->header, written ? DB_STATUS_OK : DB_STATUS_NOT_FOUND)};
}

// The buckets count, by content type, the items that are not uploaded yet.
Answer answerMediaHistogram(Database& database, Request request) {
    const auto histogram = readRecord<db_histogram_request>(request);
    if (!histogram) {
        return {};
    }
    db_histogram_response response{};
    response.header = responseHeader(histogram->header, DB_STATUS_OK, 1);
    for (const MediaItem& item : database.items()) {
        if (item.leader().record.upload_status == 0) {
            u32le& bucket = response.buckets[item.contentType()];
            bucket = bucket + 1;
        }
    }
    Message reply;
    appendRecord(reply, response);
    return {reply};
}

}  // namespace simulator

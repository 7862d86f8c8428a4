#include "libvxMediaRTOSDB/src/media_metadata.h"

#include "libvxMediaRTOSDB/src/db_responses.h"
#include "libvxMediaRTOSDB/src/http_output.h"
#include "libvxMediaRTOSDB/src/http_status.h"
#include "libvxMediaRTOSDB/src/key_writer.h"
#include "libvxMediaRTOSDB/src/media_formatters.h"
#include "libvxMediaRTOSDB/src/media_values.h"
#include "libvxMediaRTOSDB/src/metadata_query.h"
#include "libvxMediaRTOSDB/src/response_queries.h"
#include "libvxMediaRTOSDB/src/response_start.h"
#include "libvxMediaRTOSDB/src/util_assert.h"
#include "libvxMediaRTOSDB/src/util_log.h"
#include "libvxMediaRTOSDB/src/video_keys.h"

namespace {

// One request for metadata: where its object goes, whom it asks and about what.
struct Metadata {
    vxMediaDBOutput* output;
    rtosConnection* connection;
    const QuerySettings* settings;
    uint8_t response[kResponseBufferSize];  // of the last question
};

// The fields of the data sets that show the whole file, for videos and for everything else.
struct InfoFields {
    uint32_t ofVideo;
    uint32_t ofOther;
};

constexpr InfoFields kV4InfoFields = {.ofVideo = 0x0FEDB63F, .ofOther = 0x0133B20F};
constexpr InfoFields kV5InfoFields = {.ofVideo = 0xEFEDB7FF, .ofOther = 0xF173B22F};

bool hasMoreInfo(uint32_t contentType) {
    return contentType <= DB_CONTENT_TYPE_LAST && contentType != DB_CONTENT_TYPE_SESSION_FILE;
}

// Puts the keys that writeKeys writes between braces. Returns an HTTP status.
template <typename WriteKeys>
int writeObject(vxMediaDBOutput* output, WriteKeys writeKeys) {
    output->localEntryBuffer.append("{");
    const int status = writeKeys();
    output->localEntryBuffer.append("}");
    if (status != HTTP_OK)
        return status;
    return output->complete() ? HTTP_OK : HTTP_INTERNAL_ERROR;
}

int getVideoInfo(Metadata& metadata, const db_item_record** item,
                 const db_video_specific_info** video) {
    return getVideoSpecificInfoResponse(metadata.connection, metadata.settings->dirName,
                                        metadata.settings->fileName, metadata.response, item,
                                        video);
}

// As getVideoInfo, for a data set that only videos have.
int requireVideoInfo(Metadata& metadata, const db_item_record** item,
                     const db_video_specific_info** video) {
    const int status = getVideoInfo(metadata, item, video);
    if (status != HTTP_OK)
        return status;
    const uint32_t contentType = (*item)->content_type;
    if (!isVideo(contentType)) {
        UTIL_LOG(UTIL_LOG_ERROR, "not implemented for content_type %d\n", contentType);
        return HTTP_NOT_IMPLEMENTED;
    }
    return *video ? HTTP_OK : HTTP_INTERNAL_ERROR;
}

int writeVideoInfo(Metadata& metadata, uint32_t fieldMask) {
    const db_item_record* item = nullptr;
    const db_video_specific_info* video = nullptr;
    const int status = getVideoInfo(metadata, &item, &video);
    if (status != HTTP_OK)
        return status;
    return formatVideoInfo(metadata.output, fieldMask, ",", video);
}

int writeMoreInfo(Metadata& metadata, uint32_t fieldMask) {
    const db_more_info* moreInfo = nullptr;
    const int status =
        getMoreInfoResponse(metadata.connection, metadata.settings->dirName,
                            metadata.settings->fileName, metadata.response, &moreInfo);
    if (status != HTTP_OK)
        return status;
    return formatMoreInfo(metadata.output, fieldMask, ",", moreInfo);
}

int formatMetadataVideoInfo(vxMediaDBOutput* output, const db_video_specific_info& video) {
    KeyWriter keys(&output->localEntryBuffer, kAllFields, "");
    keys.number(kAlways, "dur", durationSeconds(video));
    keys.number(kAlways, "c", video.clip);
    keys.number(kAlways, "avc_profile", video.avc_profile);
    keys.number(kAlways, "profile", video.profile);
    keys.write(kAlways, "\"tag_count\":", uint32_t{video.highlight_count});
    keys.list(kAlways, "\"tags\":[", "]",
              [&](JoinedText& values) { addHighlights(values, video); });
    return keys.status();
}

int formatMetadataDur(vxMediaDBOutput* output, const db_video_specific_info& video) {
    KeyWriter keys(&output->localEntryBuffer, kAllFields, "");
    keys.number(kAlways, "dur", durationSeconds(video));
    keys.number(kAlways, "c", video.clip);
    keys.number(kAlways, "profile", video.profile);
    return keys.status();
}

int writeMetadataDur(Metadata& metadata) {
    const db_item_record* item = nullptr;
    const db_video_specific_info* video = nullptr;
    const int status = requireVideoInfo(metadata, &item, &video);
    return status == HTTP_OK ? formatMetadataDur(metadata.output, *video) : status;
}

int writeMetadataInfo(Metadata& metadata, const InfoFields& fields) {
    const db_item_record* item = nullptr;
    const db_gumi* gumi = nullptr;
    const db_gumi* parentGumi = nullptr;
    int status = getFileGUMIResponse(metadata.connection, metadata.settings->dirName,
                                     metadata.settings->fileName, metadata.response, &item, &gumi,
                                     &parentGumi);
    if (status != HTTP_OK)
        return status;

    const uint32_t contentType = item->content_type;
    const bool single = contentType <= DB_CONTENT_TYPE_TIME_LAPSE_VIDEO;
    const uint32_t fieldMask =
        (single ? fields.ofVideo : fields.ofOther) & metadata.settings->whitelistMask;
    constexpr uint32_t kOfVideoRecord = FIELD_HIGHLIGHT_COUNT | FIELD_HIGHLIGHTS;

    status =
        formatContentInfo(metadata.output, single ? fieldMask & ~kOfVideoRecord : fieldMask, item);
    if (status == HTTP_OK && isValid(*gumi))
        status = formatGUMI(metadata.output, fieldMask, ",", gumi, parentGumi);
    if (status == HTTP_OK && single)
        status = writeVideoInfo(metadata, fieldMask);
    if (status == HTTP_OK && hasMoreInfo(contentType))
        status = writeMoreInfo(metadata, fieldMask);
    return status;
}

int setUploadStatus(Metadata& metadata) {
    return getWriteUploadStatusResponse(metadata.connection, metadata.settings->dirName,
                                        metadata.settings->fileName, metadata.response,
                                        metadata.settings->newUploadStatus);
}

int writeUploadStatus(Metadata& metadata) {
    const db_item_record* item = nullptr;
    const int status =
        getContentInfoResponse(metadata.connection, metadata.settings->dirName,
                               metadata.settings->fileName, metadata.response, &item);
    return status == HTTP_OK ? formatContentInfo(metadata.output, FIELD_UPLOAD_STATUS, item)
                             : status;
}

int writeDataSet(Metadata& metadata) {
    switch (metadata.settings->filter) {
        case eDBFILTER_T_GET_VIDEOINFO:
            return generateMetadataVideoInfo(metadata.output, metadata.connection,
                                             metadata.settings);
        case eDBFILTER_T_GET_DUR:
            return writeObject(metadata.output, [&] { return writeMetadataDur(metadata); });
        case eDBFILTER_T_GET_V4INFO:
            return writeObject(metadata.output,
                               [&] { return writeMetadataInfo(metadata, kV4InfoFields); });
        case eDBFILTER_T_GET_V5INFO:
            return writeObject(metadata.output,
                               [&] { return writeMetadataInfo(metadata, kV5InfoFields); });
        case eDBFILTER_T_GET_UPLOAD:
            return writeObject(metadata.output, [&] { return writeUploadStatus(metadata); });
        case eDBFILTER_T_SET_UPLOAD:
            return writeObject(metadata.output, [&] {
                const int status = setUploadStatus(metadata);
                return status == HTTP_OK ? writeUploadStatus(metadata) : status;
            });
        default:
            UTIL_LOG(UTIL_LOG_ERROR, "Invalid dataSet (%d)", metadata.settings->filter);
            return HTTP_INTERNAL_ERROR;
    }
}

}  // namespace

int generateMetadataVideoInfo(vxMediaDBOutput* pOutput, rtosConnection* pRtosConn,
                              const QuerySettings* pSettings) {
    UTIL_ASSERT(pOutput);
    UTIL_ASSERT(pRtosConn);
    UTIL_ASSERT(pSettings);
    UTIL_ASSERT(pSettings->filter == eDBFILTER_T_GET_VIDEOINFO);
    Metadata metadata = {pOutput, pRtosConn, pSettings, {}};
    return writeObject(pOutput, [&] {
        const db_item_record* item = nullptr;
        const db_video_specific_info* video = nullptr;
        int status = requireVideoInfo(metadata, &item, &video);
        if (status != HTTP_OK)
            return status;
        const uint32_t contentType = item->content_type;
        status = formatMetadataVideoInfo(pOutput, *video);
        if (status == HTTP_OK && hasMoreInfo(contentType))
            status = writeMoreInfo(metadata, kAllFields);
        return status;
    });
}

int generateMetadata(void* outputHandle, const char* query) {
    UTIL_ASSERT(query);
    QuerySettings settings;
    int status = parseMetadataQuery(query, &settings);
    logSettings(settings);
    if (status != HTTP_OK) {
        UTIL_LOG(UTIL_LOG_ERROR, "parseMetadataQuery ret: %d, query:'%s'", status, query);
        return printErrorResponse(status);
    }
    MediaDBOutputGuard output(outputHandle);
    if (output.result() < 0) {
        UTIL_LOG(UTIL_LOG_ERROR, "vxMediaDBOutputCtor ret < 0");
        return printErrorResponse(HTTP_INTERNAL_ERROR);
    }
    RtosConnectionGuard connection;
    if (connection.result() < 0)
        UTIL_LOG(UTIL_LOG_ERROR, "rtosConnectionCtor ret < 0");
    status = statusAtStart(connection, CardIdentity());
    if (status == HTTP_OK) {
        Metadata metadata = {output.get(), connection.get(), &settings, {}};
        status = writeDataSet(metadata);
    }

    printHeader(status);
    if (status == HTTP_OK) {
        printText(output.get()->localEntryBuffer.text());
        printText("\r\n");
    }
    return finishResponse(status);
}

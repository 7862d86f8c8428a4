#include <mediacheckd/vxMediaRTOSDB/media_metadata.h>

#include "libvxMediaRTOSDB/src/http/query/settings_log.h"
#include "libvxMediaRTOSDB/src/http/response/http_output.h"
#include "libvxMediaRTOSDB/src/http/response/response_start.h"
#include "libvxMediaRTOSDB/src/http/text/key_writer.h"
#include "libvxMediaRTOSDB/src/http/text/media_db_output_guard.h"
#include "libvxMediaRTOSDB/src/http/text/media_values.h"
#include "libvxMediaRTOSDB/src/http/text/text_buffer.h"
#include "libvxMediaRTOSDB/src/http/text/video_keys.h"
#include "libvxMediaRTOSDB/src/log/util_assert.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/media_formatters.h>
#include <mediacheckd/vxMediaRTOSDB/metadata_query.h>
#include <mediacheckd/vxMediaRTOSDB/response_queries.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

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

// Asks one of the response queries about the file. found: the query's further arguments.
template <typename Query, typename... Found>
int ask(Metadata& metadata, Query query, Found... found) {
    return query(metadata.connection, metadata.settings->dirName, metadata.settings->fileName,
                 metadata.response, found...);
}

// Finds what a data set that only videos have is made of.
int requireVideoInfo(Metadata& metadata, const db_video_specific_info** video) {
    const db_item_record* item = nullptr;
    const int status = ask(metadata, getVideoSpecificInfoResponse, &item, video);
    if (status != HTTP_OK) {
        return status;
    }
    const uint32_t contentType = item->content_type;
    if (!isVideo(contentType)) {
        UTIL_LOG(UTIL_LOG_ERROR, "not implemented for content_type %d\n", signedWord(contentType));
        return HTTP_NOT_IMPLEMENTED;
    }
    if (!*video) {
        UTIL_LOG(UTIL_LOG_ERROR, "no video information for content_type %d\n",
                 signedWord(contentType));
        return HTTP_INTERNAL_ERROR;
    }
    return HTTP_OK;
}

int writeVideoInfo(Metadata& metadata, uint32_t fieldMask) {
    const db_item_record* item = nullptr;
    const db_video_specific_info* video = nullptr;
    const int status = ask(metadata, getVideoSpecificInfoResponse, &item, &video);
    return status == HTTP_OK ? formatVideoInfo(metadata.output, fieldMask, ",", video) : status;
}

int writeMoreInfo(Metadata& metadata, uint32_t fieldMask) {
    const db_more_info* moreInfo = nullptr;
    const int status = ask(metadata, getMoreInfoResponse, &moreInfo);
    return status == HTTP_OK ? formatMoreInfo(metadata.output, fieldMask, ",", moreInfo) : status;
}

int formatMetadataVideoInfo(vxMediaDBOutput* output, const db_video_specific_info& video) {
    TextBuffer entry = entryOf(*output);
    KeyWriter keys(&entry, kAllFields, "");
    keys.number<"dur">(FIELD_DURATION, durationSeconds(video));
    keys.number<"c">(FIELD_CLIP, video.clip);
    keys.number<"avc_profile">(FIELD_AVC_PROFILE, video.avc_profile);
    keys.number<"profile">(FIELD_PROFILE, video.profile);
    keys.write(here(), FIELD_HIGHLIGHT_COUNT, "\"tag_count\":", uint32_t{video.highlight_count});
    keys.list(FIELD_HIGHLIGHTS, "\"tags\":[", "]",
              [&](JoinedText& values) { addHighlights(values, video); });
    return keys.status();
}

int formatMetadataDur(vxMediaDBOutput* output, const db_video_specific_info& video) {
    TextBuffer entry = entryOf(*output);
    KeyWriter keys(&entry, kAllFields, "");
    keys.number<"dur">(FIELD_DURATION, durationSeconds(video));
    keys.number<"c">(FIELD_CLIP, video.clip);
    keys.number<"profile">(FIELD_PROFILE, video.profile);
    return keys.status();
}

int writeMetadataVideoInfo(Metadata& metadata) {
    const db_video_specific_info* video = nullptr;
    int status = requireVideoInfo(metadata, &video);
    if (status == HTTP_OK) {
        status = formatMetadataVideoInfo(metadata.output, *video);
    }
    if (status == HTTP_OK) {
        status = writeMoreInfo(metadata, kAllFields);
    }
    return status;
}

int writeMetadataDur(Metadata& metadata) {
    const db_video_specific_info* video = nullptr;
    const int status = requireVideoInfo(metadata, &video);
    return status == HTTP_OK ? formatMetadataDur(metadata.output, *video) : status;
}

const db_gumi* nullUnlessValid(const db_gumi* gumi) {
    return gumi && isValid(*gumi) ? gumi : nullptr;
}

int writeMetadataInfo(Metadata& metadata, const InfoFields& fields) {
    const db_item_record* item = nullptr;
    const db_gumi* gumi = nullptr;
    const db_gumi* parentGumi = nullptr;
    int status = ask(metadata, getFileGUMIResponse, &item, &gumi, &parentGumi);
    if (status != HTTP_OK) {
        return status;
    }

    const uint32_t contentType = item->content_type;
    const bool video = isOrdinaryVideo(contentType);
    const uint32_t fieldMask =
        (video ? fields.ofVideo : fields.ofOther) & metadata.settings->whitelistMask;
    constexpr uint32_t kOfVideoRecord = FIELD_HIGHLIGHT_COUNT | FIELD_HIGHLIGHTS;

    status =
        formatContentInfo(metadata.output, video ? fieldMask & ~kOfVideoRecord : fieldMask, item);
    if (status == HTTP_OK) {
        status = formatGUMI(metadata.output, fieldMask, ",", nullUnlessValid(gumi),
                            nullUnlessValid(parentGumi));
    }
    if (status == HTTP_OK && video) {
        status = writeVideoInfo(metadata, fieldMask);
    }
    if (status == HTTP_OK && hasMoreInfo(contentType)) {
        status = writeMoreInfo(metadata, fieldMask);
    }
    return status;
}

int writeUploadKey(Metadata& metadata) {
    const db_item_record* item = nullptr;
    const int status = ask(metadata, getContentInfoResponse, &item);
    return status == HTTP_OK ? formatContentInfo(metadata.output, FIELD_UPLOAD_STATUS, item)
                             : status;
}

int setAndWriteUploadKey(Metadata& metadata) {
    const int status =
        ask(metadata, getWriteUploadStatusResponse, metadata.settings->newUploadStatus);
    return status == HTTP_OK ? writeUploadKey(metadata) : status;
}

int writeKeys(Metadata& metadata) {
    switch (metadata.settings->filter) {
        case eDBFILTER_T_GET_VIDEOINFO:
            return writeMetadataVideoInfo(metadata);
        case eDBFILTER_T_GET_DUR:
            return writeMetadataDur(metadata);
        case eDBFILTER_T_GET_V4INFO:
            return writeMetadataInfo(metadata, kV4InfoFields);
        case eDBFILTER_T_GET_V5INFO:
            return writeMetadataInfo(metadata, kV5InfoFields);
        case eDBFILTER_T_GET_UPLOAD:
            return writeUploadKey(metadata);
        case eDBFILTER_T_SET_UPLOAD:
            return setAndWriteUploadKey(metadata);
        default:
            UTIL_LOG(UTIL_LOG_ERROR, "Invalid dataSet (%d)", signedWord(metadata.settings->filter));
            return HTTP_INTERNAL_ERROR;
    }
}

// Appends the object of the data set to the entry buffer. Returns an HTTP status; unless it is
// HTTP_OK, the object breaks off where that arose.
int writeObject(vxMediaDBOutput* output, rtosConnection* connection,
                const QuerySettings* settings) {
    Metadata metadata = {output, connection, settings, {}};
    TextBuffer entry = entryOf(*output);
    entry.append(here(), "{");
    if (!entry.complete()) {
        return HTTP_INTERNAL_ERROR;
    }
    const int status = writeKeys(metadata);
    if (status != HTTP_OK) {
        return status;
    }
    entry.append(here(), "}");
    return entry.complete() ? HTTP_OK : HTTP_INTERNAL_ERROR;
}

}  // namespace

int generateMetadataVideoInfo(vxMediaDBOutput* pOutput, rtosConnection* pRtosConn,
                              const QuerySettings* pSettings) {
    UTIL_ASSERT(pOutput);
    UTIL_ASSERT(pRtosConn);
    UTIL_ASSERT(pSettings);
    UTIL_ASSERT(pSettings->filter == eDBFILTER_T_GET_VIDEOINFO);
    return writeObject(pOutput, pRtosConn, pSettings);
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
    if (connection.result() < 0) {
        UTIL_LOG(UTIL_LOG_ERROR, "rtosConnectionCtor ret < 0");
    }
    const CardIdentity identity;  // reading it makes the card's identity, if it has none yet
    status = statusAtStart(connection, identity);
    if (status == HTTP_OK) {
        status = writeObject(output.get(), connection.get(), &settings);
    }

    printHeader(status);
    if (status == HTTP_OK) {
        printText(entryOf(*output.get()).text());
        printText("\r\n");
    }
    return finishResponse(status);
}

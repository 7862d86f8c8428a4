#include <mediacheckd/vxMediaRTOSDB/media_formatters.h>

#include "libvxMediaRTOSDB/src/http/text/key_writer.h"
#include "libvxMediaRTOSDB/src/http/text/media_values.h"
#include "libvxMediaRTOSDB/src/http/text/video_keys.h"
#include "libvxMediaRTOSDB/src/log/util_assert.h"
#include "libvxMediaRTOSDB/src/records/name_fields.h"

int formatContentInfo(vxMediaDBOutput* pOutput, uint32_t fieldMask, const db_item_record* pInfo) {
    UTIL_ASSERT(pOutput);
    if (!pInfo) {
        return HTTP_OK;
    }
    const db_item_record& item = *pInfo;
    TextBuffer entry = entryOf(*pOutput);
    KeyWriter keys(&entry, fieldMask, "");
    keys.text<"n">(FIELD_NAME, textOf(item.file_name));
    keys.number<"mod">(FIELD_MODIFIED, item.modified);
    keys.number<"cre">(FIELD_CREATED, item.created);
    keys.number<"s">(FIELD_SIZE, item.size);
    keys.number<"mahs">(FIELD_SCORE, itemScore(item));
    keys.number<"hc">(FIELD_HIGHLIGHT_COUNT, item.highlight_count);
    keys.number<"us">(FIELD_UPLOAD_STATUS, item.upload_status);
    keys.flag<"eis">(FIELD_EIS, hasAttribute(item, ITEM_ATTRIBUTE_EIS));
    keys.flag<"hdr">(FIELD_HDR, hasAttribute(item, ITEM_ATTRIBUTE_HDR));
    keys.flag<"wdr">(FIELD_WDR, hasAttribute(item, ITEM_ATTRIBUTE_WDR));
    keys.flag<"pta">(FIELD_PTA, hasAttribute(item, ITEM_ATTRIBUTE_PTA));
    keys.word<"ao">(FIELD_AUDIO_OPTION, audioOption(item));
    keys.flag<"raw">(FIELD_RAW, hasAttribute(item, ITEM_ATTRIBUTE_RAW));
    keys.flag<"tr">(FIELD_TR, hasAttribute(item, ITEM_ATTRIBUTE_TR));
    keys.flag<"mp">(FIELD_MP, hasAttribute(item, ITEM_ATTRIBUTE_MP));
    keys.number<"ct">(FIELD_CONTENT_TYPE, item.content_type);
    keys.number<"rot">(FIELD_ROTATION, item.rotation);
    keys.number<"fov">(FIELD_FIELD_OF_VIEW, item.field_of_view);
    return keys.status();
}

int formatVideoInfo(vxMediaDBOutput* pOutput, uint32_t fieldMask, const char* pPrepend,
                    const db_video_specific_info* pVideoInfo) {
    UTIL_ASSERT(pOutput);
    UTIL_ASSERT(pPrepend);
    if (!pVideoInfo) {
        return HTTP_OK;
    }
    const db_video_specific_info& video = *pVideoInfo;
    TextBuffer entry = entryOf(*pOutput);
    KeyWriter keys(&entry, fieldMask, pPrepend);
    writeLs(keys, video);
    keys.number<"cl">(FIELD_CLIP, video.clip);
    keys.number<"avc_profile">(FIELD_AVC_PROFILE, video.avc_profile);
    keys.number<"profile">(FIELD_PROFILE, video.profile);
    keys.number<"hc">(FIELD_HIGHLIGHT_COUNT, video.highlight_count);
    keys.list(FIELD_HIGHLIGHTS, "\"hi\":[", "]",
              [&](JoinedText& values) { addHighlights(values, video); });
    keys.number<"dur">(FIELD_DURATION, durationSeconds(video));
    return keys.status();
}

int formatMoreInfo(vxMediaDBOutput* pOutput, uint32_t fieldMask, const char* pPrepend,
                   const db_more_info* pMoreInfo) {
    UTIL_ASSERT(pOutput);
    UTIL_ASSERT(pPrepend);
    if (!pMoreInfo) {
        return HTTP_OK;
    }
    const db_more_info& more = *pMoreInfo;
    TextBuffer entry = entryOf(*pOutput);
    KeyWriter keys(&entry, fieldMask, pPrepend);
    keys.write(here(), FIELD_DIMENSIONS, "\"w\":\"", asSigned(more.width), "\",\"h\":\"",
               asSigned(more.height), "\"");
    keys.write(here(), FIELD_FRAME_RATE, "\"fps\":\"", asSigned(more.frame_rate_numerator),
               "\",\"fps_denom\":\"", asSigned(more.frame_rate_denominator), "\"");
    keys.number<"prog">(FIELD_PROGRESSIVE, asSigned(more.is_progressive));
    keys.number<"subsample">(FIELD_SUBSAMPLED, asSigned(more.is_subsampled));
    return keys.status();
}

int formatGUMI(vxMediaDBOutput* pOutput, uint32_t fieldMask, const char* pPrepend,
               const db_gumi* pGUMI, const db_gumi* pPGUMI) {
    UTIL_ASSERT(pOutput);
    UTIL_ASSERT(pPrepend);
    if (!pGUMI) {
        return HTTP_OK;
    }
    TextBuffer entry = entryOf(*pOutput);
    KeyWriter keys(&entry, fieldMask, pPrepend);
    keys.hex<"gumi">(FIELD_GUMI, pGUMI->bytes);
    if (pPGUMI) {
        keys.hex<"pgumi">(FIELD_PARENT_GUMI, pPGUMI->bytes);
    }
    return keys.status();
}

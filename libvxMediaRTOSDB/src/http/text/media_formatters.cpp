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
    keys.text(FIELD_NAME, "n", textOf(item.file_name));
    keys.number(FIELD_MODIFIED, "mod", item.modified);
    keys.number(FIELD_CREATED, "cre", item.created);
    keys.number(FIELD_SIZE, "s", item.size);
    keys.number(FIELD_SCORE, "mahs", itemScore(item));
    keys.number(FIELD_HIGHLIGHT_COUNT, "hc", item.highlight_count);
    keys.number(FIELD_UPLOAD_STATUS, "us", item.upload_status);
    keys.flag(FIELD_EIS, "eis", hasAttribute(item, ITEM_ATTRIBUTE_EIS));
    keys.flag(FIELD_HDR, "hdr", hasAttribute(item, ITEM_ATTRIBUTE_HDR));
    keys.flag(FIELD_WDR, "wdr", hasAttribute(item, ITEM_ATTRIBUTE_WDR));
    keys.flag(FIELD_PTA, "pta", hasAttribute(item, ITEM_ATTRIBUTE_PTA));
    keys.text(FIELD_AUDIO_OPTION, "ao", audioOption(item));
    keys.flag(FIELD_RAW, "raw", hasAttribute(item, ITEM_ATTRIBUTE_RAW));
    keys.flag(FIELD_TR, "tr", hasAttribute(item, ITEM_ATTRIBUTE_TR));
    keys.flag(FIELD_MP, "mp", hasAttribute(item, ITEM_ATTRIBUTE_MP));
    keys.number(FIELD_CONTENT_TYPE, "ct", item.content_type);
    keys.number(FIELD_ROTATION, "rot", item.rotation);
    keys.number(FIELD_FIELD_OF_VIEW, "fov", item.field_of_view);
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
    keys.number(FIELD_CLIP, "cl", video.clip);
    keys.number(FIELD_AVC_PROFILE, "avc_profile", video.avc_profile);
    keys.number(FIELD_PROFILE, "profile", video.profile);
    keys.number(FIELD_HIGHLIGHT_COUNT, "hc", video.highlight_count);
    keys.list(FIELD_HIGHLIGHTS, "\"hi\":[", "]",
              [&](JoinedText& values) { addHighlights(values, video); });
    keys.number(FIELD_DURATION, "dur", durationSeconds(video));
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
    keys.number(FIELD_PROGRESSIVE, "prog", asSigned(more.is_progressive));
    keys.number(FIELD_SUBSAMPLED, "subsample", asSigned(more.is_subsampled));
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
    keys.hex(FIELD_GUMI, "gumi", pGUMI->bytes);
    if (pPGUMI) {
        keys.hex(FIELD_PARENT_GUMI, "pgumi", pPGUMI->bytes);
    }
    return keys.status();
}

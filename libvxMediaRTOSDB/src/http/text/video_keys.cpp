#include "libvxMediaRTOSDB/src/http/text/video_keys.h"

#include <algorithm>

void writeLs(KeyWriter& keys, const db_video_specific_info& video) {
    if (video.ls == 0) {
        keys.number(FIELD_LS, "ls", -1);
    } else {
        keys.number(FIELD_LS, "ls", video.ls);
    }
}

void addHighlights(JoinedText& values, const db_video_specific_info& video) {
    const auto* highlights = reinterpret_cast<const u32le*>(&video + 1);
    const uint32_t count = std::min<uint32_t>(video.highlight_count, kMaxListedHighlights);
    for (uint32_t i = 0; i < count; ++i) {
        values.add(here(), uint32_t{highlights[i]});
    }
}

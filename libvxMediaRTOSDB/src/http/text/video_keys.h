// Parts of a video's JSON that more than one response has.
#pragma once

#include <algorithm>
#include <cstdint>

#include "libvxMediaRTOSDB/src/http/text/key_writer.h"
#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>

// Per-file metadata lists no more highlights than these.
constexpr uint32_t kMaxListedHighlights = 99;

// Writes "ls", which is -1 for a video that has none: for lists and per-file metadata.
inline void writeLs(KeyWriter& keys, const db_video_specific_info& video) {
    if (video.ls == 0) {
        keys.number<"ls">(FIELD_LS, -1);
    } else {
        keys.number<"ls">(FIELD_LS, video.ls);
    }
}

// Adds the highlights that lie right behind the record, at most kMaxListedHighlights: for per-file
// metadata.
inline void addHighlights(JoinedText& values, const db_video_specific_info& video) {
    const auto* highlights = reinterpret_cast<const u32le*>(&video + 1);
    const uint32_t count = std::min<uint32_t>(video.highlight_count, kMaxListedHighlights);
    for (uint32_t i = 0; i < count; ++i) {
        values.add(here(), uint32_t{highlights[i]});
    }
}

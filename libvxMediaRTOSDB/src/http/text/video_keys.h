// Parts of a video's JSON that more than one response has.
#pragma once

#include <cstdint>

#include "libvxMediaRTOSDB/src/http/text/key_writer.h"
#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>

// Per-file metadata lists no more highlights than these.
constexpr uint32_t kMaxListedHighlights = 99;

// Writes "ls", which is -1 for a video that has none: for lists and per-file metadata.
void writeLs(KeyWriter& keys, const db_video_specific_info& video);

// Adds the highlights that lie right behind the record, at most kMaxListedHighlights: for per-file
// metadata.
void addHighlights(JoinedText& values, const db_video_specific_info& video);

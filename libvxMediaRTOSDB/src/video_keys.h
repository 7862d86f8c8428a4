// What the responses about videos share.
#pragma once

#include <cstdint>

#include "libvxMediaRTOSDB/src/db_item_record.h"
#include "libvxMediaRTOSDB/src/key_writer.h"

// A video record is followed by all of its highlights; per-file metadata lists no more than these.
constexpr uint32_t kMaxListedHighlights = 99;

// Writes "ls", which is -1 for a video that has none.
void writeLs(KeyWriter& keys, const db_video_specific_info& video);

// Adds the highlights that lie right behind the record, at most kMaxListedHighlights.
void addHighlights(JoinedText& values, const db_video_specific_info& video);

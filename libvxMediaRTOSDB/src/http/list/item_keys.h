// The JSON keys of one file in a media list, as far as the writer's field mask selects them.
#pragma once

#include <cstdint>
#include <span>

#include "libvxMediaRTOSDB/src/http/text/key_writer.h"
#include "libvxMediaRTOSDB/src/records/item_reader.h"
#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>

// The two lists, where their texts differ.
enum class ListStyle {
    kMediaList,  // "ghc" holds the highlighted numbers; a member's size stands before its details
    kPagedList,  // "ghc" counts them and "ghi" lists them; a member's size stands last
};

// The file that a member of a video group is. Its parts point into a response.
struct MemberRecord {
    const db_item_record* item;
    const db_video_specific_info* video;
    std::span<const u32le> highlights;
};

void writeItemKeys(KeyWriter& keys, const ListItem& item, ListStyle style);
void writeMemberKeys(KeyWriter& keys, const MemberRecord& member, ListStyle style);

// The JSON keys of one file in a media list, as far as a field mask (MediaField bits) selects them.
#pragma once

#include <cstdint>
#include <span>

#include "libvxMediaRTOSDB/src/http/text/key_writer.h"
#include "libvxMediaRTOSDB/src/records/item_reader.h"
#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>

// Where the texts of the lists differ.
struct ListStyle {
    bool countsGroupHighlights;  // in "ghc", with the numbers in "ghi"; else they stand in "ghc"
    bool memberSizeLast;         // "ls" and "s" of a member stand behind its details, else before
};

// The file that a member of a video group is. Its parts point into a response.
struct MemberRecord {
    const db_item_record* item;
    const db_video_specific_info* video;
    std::span<const u32le> highlights;
};

void writeItemKeys(TextBuffer* object, uint32_t fieldMask, const ListItem& item, ListStyle style);
void writeMemberKeys(TextBuffer* object, uint32_t fieldMask, const MemberRecord& member,
                     ListStyle style);

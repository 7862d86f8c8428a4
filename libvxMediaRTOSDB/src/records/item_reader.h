// Reads one item of a list page: its record and all that may follow it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>

enum class ItemStatus {
    kOk,
    kTooSmall,            // some part of the item does not lie inside the bytes received
    kMaskTooLarge,        // a mask of the item would not fit into any response
    kInvalidContentType,  // above DB_CONTENT_TYPE_LAST: what follows the record is unknown
};

// What a page's items carry besides their records, as their reader sees it.
struct ItemLayout {
    uint32_t listOptions;           // of the response: DbListOption bits
    uint32_t parentGumiAttributes;  // a parent GUMI follows when any of these attributes is set
    bool groupedVideos;             // false: videos of group types carry the record of a single one
};

// What every item may have.
struct PlainParts {
    const db_item_record* record;
    const db_gumi* gumi;
    const db_gumi* parentGumi;
    const db_more_info* moreInfo;
};

// What a single video has.
struct VideoParts {
    const db_video_specific_info* videoInfo;
    std::span<const u32le> highlights;
};

// What a group has.
struct GroupParts {
    const db_group_info* group;
    std::span<const uint8_t> memberMask;     // when group->num_missing is not 0
    std::span<const uint8_t> highlightMask;  // of photos whose record counts highlights
};

// One item. Every part points into the response; one that the item does not have is null or empty.
struct ListItem : PlainParts, VideoParts, GroupParts {};

// Logs that a group's numbers or masks make no sense.
// item: holds the record and the group.
void logDamagedGroup(const ListItem& item);

// Reads the item that starts at *offset, which then is where the next one starts; without kOk it
// stays. When the item lies there whole, a damaged group (member_mask.h) is logged.
// response: the bytes received, from the start of the response. item: cleared first; on kTooSmall,
// kMaskTooLarge and kInvalidContentType it holds the parts that were read before the fault (with
// kMaskTooLarge the group, with kInvalidContentType the record).
[[nodiscard]] ItemStatus readListItem(std::span<const uint8_t> response, size_t* offset,
                                      const ItemLayout& layout, ListItem* item);

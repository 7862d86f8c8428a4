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

// One item. Every part points into the response; a part that the item does not have is null or
// empty.
struct ListItem {
    const db_item_record* record;
    const db_gumi* gumi;
    const db_gumi* parentGumi;
    const db_more_info* moreInfo;
    const db_video_specific_info* videoInfo;  // of a single video
    std::span<const u32le> highlights;        // of a single video
    const db_group_info* group;
    std::span<const uint8_t> memberMask;     // when group->num_missing is not 0
    std::span<const uint8_t> highlightMask;  // of a photo group whose record counts highlights
    size_t nextOffset;                       // where the next item starts
};

// Logs that a group's numbers or masks make no sense.
// item: holds the record and the group.
void logDamagedGroup(const ListItem& item);

// Reads the item that starts at offset. When it lies there whole, a damaged group (member_mask.h)
// is logged. response: the bytes received, from the start of the response. item: cleared first; on
// kTooSmall, kMaskTooLarge and kInvalidContentType it holds the parts that were read before the
// fault (with kMaskTooLarge the group, with kInvalidContentType the record) and nextOffset is 0.
[[nodiscard]] ItemStatus readListItem(std::span<const uint8_t> response, size_t offset,
                                      const ItemLayout& layout, ListItem* item);

// Groups of photos taken at intervals may reach the list as several items, their spans: each is a
// run of the group's file numbers.
#pragma once

#include <cstdint>

#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>
#include <mediacheckd/vxMediaRTOSDB/zep_item.h>

// Tells whether items of the content type may be spans of one group.
constexpr bool isSpanGroup(uint32_t contentType) {
    return contentType == DB_CONTENT_TYPE_TIME_LAPSE_PHOTO ||
           contentType == DB_CONTENT_TYPE_NIGHT_LAPSE_PHOTO;
}

// Tells whether the item is a span of a group. The number that stands for no group makes none.
inline bool isSpan(const zep_item_s& item) {
    constexpr uint32_t kNoGroupNumber = 0xFFFFFFFF;
    return isSpanGroup(item.content_type) && item.group_number != kNoGroupNumber;
}

// Number of files of an item; of a group's, in this span.
inline uint32_t fileCount(const zep_item_s& item) {
    return item.last_number - item.first_number + 1;
}

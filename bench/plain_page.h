// A full page of single photos, which carry nothing but their records.
#pragma once

#include <cstdint>
#include <cstring>
#include <vector>

#include <mediacheckd/vxMediaRTOSDB/db_responses.h>

constexpr uint32_t kPlainItems = 15;

inline std::vector<uint8_t> plainPage() {
    db_list_response_header header = {};
    header.header.count_returned = kPlainItems;
    header.list_options = LIST_OPTION_VIDEO_GROUPING;
    header.total_entries = kPlainItems;
    db_item_record item = {};
    item.content_type = DB_CONTENT_TYPE_SINGLE_PHOTO;
    std::memcpy(item.dir_name, "100MEDIA", kDirNameSize);
    std::memcpy(item.file_name, "VXAA0001.JPG", kFileNameSize);
    item.created = 1000;

    std::vector<uint8_t> page(sizeof header + kPlainItems * sizeof item);
    std::memcpy(page.data(), &header, sizeof header);
    for (size_t i = 0; i < kPlainItems; ++i) {
        std::memcpy(page.data() + sizeof header + i * sizeof item, &item, sizeof item);
    }
    return page;
}

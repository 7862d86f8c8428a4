// What the simulated database knows of a card: items, and the files that they consist of.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>

namespace simulator {

// A group that spans more numbers than this is several items, so that every item fits in a reply.
inline constexpr uint32_t kSpanMax = 4096;

// A video with more highlights than this would not fit in a reply.
inline constexpr std::size_t kHighlightsMax = 300;

// The directory, a slash and the name of a file.
[[nodiscard]] std::string pathOf(const db_item_record& file);

// One file, as the records that describe it. Highlight counts are left to the reply.
struct MediaFile {
    uint32_t number = 0;  // in its group
    db_item_record record{};
    db_gumi gumi{};        // all zero: unknown
    db_gumi parentGumi{};  // meaningful with ITEM_ATTRIBUTE_PARENT_GUMI
    db_more_info moreInfo{};
    db_video_specific_info video{};
    std::vector<uint32_t> highlights =
        {};  // milliseconds into a video; for a photo only their count
};

// One entry of the database: a single file, or a group's files of one directory.
struct MediaItem {
    std::vector<MediaFile> files = {};  // at least one, by ascending number
    uint32_t groupNumber = 0;
    uint32_t firstNumber = 0;  // the files' numbers lie from here
    uint32_t lastNumber = 0;   // to here; those without a file are missing members
    std::vector<uint32_t> highlightedNumbers = {};  // of a photo group
    bool isSessionFile = false;

    // The file whose record stands for the item.
    [[nodiscard]] const MediaFile& leader() const { return files.front(); }
    [[nodiscard]] uint32_t contentType() const { return leader().record.content_type; }
};

}  // namespace simulator

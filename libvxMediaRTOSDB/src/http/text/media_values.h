// The values that a response reports of a media item, as far as they are computed.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>

#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>

// Tells whether any of the attributes is set.
constexpr bool hasAttribute(const db_item_record& item, uint32_t attributes) {
    return (item.attributes & attributes) != 0;
}

constexpr std::string_view audioOption(const db_item_record& item) {
    if (hasAttribute(item, ITEM_ATTRIBUTE_AUDIO_AUTO)) {
        return "auto";
    }
    if (hasAttribute(item, ITEM_ATTRIBUTE_AUDIO_WIND)) {
        return "wind";
    }
    return hasAttribute(item, ITEM_ATTRIBUTE_AUDIO_STEREO) ? "stereo" : "off";
}

// Returns the duration in seconds, rounded.
constexpr uint32_t durationSeconds(const db_video_specific_info& video) {
    return static_cast<uint32_t>((uint64_t{video.duration_ms} + 500) / 1000);
}

// A GUMI that is all 0x00 or all 0xFF stands for none.
constexpr bool isValid(const db_gumi& gumi) {
    const auto allAre = [&](uint8_t value) {
        return std::all_of(gumi.bytes, gumi.bytes + kGumiSize,
                           [=](uint8_t byte) { return byte == value; });
    };
    return !allAre(0x00) && !allAre(0xFF);
}

// Returns the word as the signed number that it is printed as.
constexpr int32_t asSigned(uint32_t word) {
    return static_cast<int32_t>(word);
}

#include "tools/mediactl/record_json.h"

#include <algorithm>
#include <cstring>

#include "libvxMediaRTOSDB/src/records/hex_digits.h"
#include "libvxMediaRTOSDB/src/records/member_mask.h"

namespace mediactl {

namespace {

constexpr const char* kContentTypes[] = {
    "single video",
    "grouped video",
    "chaptered video",
    "time-lapse video",
    "photo",
    "burst",
    "time lapse",
    "session file",
    "night lapse",
    "night photo",
    "continuous photos",
    "",
    "video from burst",
};

struct Attribute {
    uint32_t bits;
    const char* name;
};
constexpr Attribute kAttributes[] = {
    {ITEM_ATTRIBUTE_PARENT_GUMI, "parent_gumi"},
    {ITEM_ATTRIBUTE_EIS, "eis"},
    {ITEM_ATTRIBUTE_PTA, "pta"},
    {ITEM_ATTRIBUTE_AUDIO_STEREO, "stereo"},
    {ITEM_ATTRIBUTE_AUDIO_WIND, "wind"},
    {ITEM_ATTRIBUTE_AUDIO_AUTO, "auto"},
    {ITEM_ATTRIBUTE_WDR, "wdr"},
    {ITEM_ATTRIBUTE_RAW, "raw"},
    {ITEM_ATTRIBUTE_TR, "tr"},
    {ITEM_ATTRIBUTE_MP, "mp"},
    {ITEM_ATTRIBUTE_HDR, "hdr"},
};

Json attributeNames(uint32_t attributes) {
    Json names = Json::array();
    for (const auto& attribute : kAttributes) {
        if (attributes & attribute.bits) {
            names.push_back(attribute.name);
        }
    }
    return names;
}

// A mask tells what is missing or highlighted by a clear bit.
Json unmarkedNumbers(const db_group_info& group, std::span<const uint8_t> mask) {
    Json numbers = Json::array();
    forEachUnmarked(group, mask, kMaxGroupSpan,
                    [&](uint32_t number) { numbers.push_back(number); });
    return numbers;
}

}  // namespace

Json kindName(uint32_t contentType) {
    const char* const name =
        contentType < std::size(kContentTypes) ? kContentTypes[contentType] : "";
    return *name ? Json(name) : Json();
}

Json gumiJson(const db_gumi& gumi) {
    if (std::ranges::all_of(gumi.bytes, [](uint8_t byte) { return byte == 0; })) {
        return nullptr;
    }
    const auto digits = hexDigits(std::span(gumi.bytes), HexCase::kLower);
    return std::string(digits.data(), digits.size());
}

std::string nameText(std::span<const char> field) {
    return {field.data(), strnlen(field.data(), field.size())};
}

Json itemJson(const db_item_record& item) {
    return {
        {"content_type", uint32_t{item.content_type}},
        {"kind", kindName(item.content_type)},
        {"created", uint32_t{item.created}},
        {"modified", uint32_t{item.modified}},
        {"highlight_count", uint32_t{item.highlight_count}},
        {"attributes", attributeNames(item.attributes)},
        {"upload_status", uint32_t{item.upload_status}},
        {"size_bytes", uint64_t{item.size}},
        {"score", itemScore(item)},
        {"rotation", uint32_t{item.rotation}},
        {"field_of_view", uint32_t{item.field_of_view}},
    };
}

Json groupJson(const db_group_info& group, std::span<const uint8_t> memberMask,
               std::span<const uint8_t> highlightMask) {
    if (group.num_missing == 0) {
        memberMask = {};
    }
    return {
        {"group_number", uint32_t{group.group_number}},
        {"first_number", uint32_t{group.first_number}},
        {"last_number", uint32_t{group.last_number}},
        {"missing", unmarkedNumbers(group, memberMask)},
        {"highlights", unmarkedNumbers(group, highlightMask)},
        {"size_bytes", uint64_t{group.group_size}},
    };
}

Json videoJson(const db_video_specific_info& video, std::span<const uint32_t> highlights) {
    return {
        {"duration_ms", uint32_t{video.duration_ms}},
        {"ls", uint32_t{video.ls}},
        {"profile", uint32_t{video.profile}},
        {"avc_profile", uint32_t{video.avc_profile}},
        {"clip", video.clip != 0},
        {"highlight_count", uint32_t{video.highlight_count}},
        {"highlights", highlights},
    };
}

Json moreInfoJson(const db_more_info& info) {
    return {
        {"width", uint32_t{info.width}},
        {"height", uint32_t{info.height}},
        {"frame_rate_numerator", uint32_t{info.frame_rate_numerator}},
        {"frame_rate_denominator", uint32_t{info.frame_rate_denominator}},
        {"is_progressive", info.is_progressive != 0},
        {"is_subsampled", info.is_subsampled != 0},
    };
}

}  // namespace mediactl

#include "simulator/card/file_settings.h"

#include <algorithm>
#include <charconv>
#include <ctime>
#include <limits>

namespace simulator {

namespace {

constexpr uint32_t kAny = std::numeric_limits<uint32_t>::max();
constexpr uint32_t kScoreMax = 127;
constexpr uint32_t kNumberMax = 9999;  // names carry four digits

struct NumberMember {
    std::string_view name;
    uint32_t max;
    u32le& (*field)(MediaFile&);
};

constexpr NumberMember kNumberMembers[] = {
    {"upload_status", kAny, [](MediaFile& f) -> u32le& { return f.record.upload_status; }},
    {"score", kScoreMax, [](MediaFile& f) -> u32le& { return f.record.score; }},
    {"rotation", kAny, [](MediaFile& f) -> u32le& { return f.record.rotation; }},
    {"field_of_view", kAny, [](MediaFile& f) -> u32le& { return f.record.field_of_view; }},
    {"duration_ms", kAny, [](MediaFile& f) -> u32le& { return f.video.duration_ms; }},
    {"ls", kAny, [](MediaFile& f) -> u32le& { return f.video.ls; }},
    {"profile", kAny, [](MediaFile& f) -> u32le& { return f.video.profile; }},
    {"avc_profile", kAny, [](MediaFile& f) -> u32le& { return f.video.avc_profile; }},
    {"width", kAny, [](MediaFile& f) -> u32le& { return f.moreInfo.width; }},
    {"height", kAny, [](MediaFile& f) -> u32le& { return f.moreInfo.height; }},
};

struct FlagMember {
    std::string_view name;
    u32le& (*field)(MediaFile&);
};

constexpr FlagMember kFlagMembers[] = {
    {"clip", [](MediaFile& f) -> u32le& { return f.video.clip; }},
    {"progressive", [](MediaFile& f) -> u32le& { return f.moreInfo.is_progressive; }},
    {"subsampled", [](MediaFile& f) -> u32le& { return f.moreInfo.is_subsampled; }},
};

struct Attribute {
    std::string_view name;
    uint32_t bits;
};

constexpr Attribute kAttributes[] = {
    {"eis", ITEM_ATTRIBUTE_EIS},
    {"pta", ITEM_ATTRIBUTE_PTA},
    {"stereo", ITEM_ATTRIBUTE_AUDIO_STEREO},
    {"wind", ITEM_ATTRIBUTE_AUDIO_WIND},
    {"auto", ITEM_ATTRIBUTE_AUDIO_AUTO},
    {"wdr", ITEM_ATTRIBUTE_WDR},
    {"raw", ITEM_ATTRIBUTE_RAW},
    {"tr", ITEM_ATTRIBUTE_TR},
    {"mp", ITEM_ATTRIBUTE_MP},
    {"hdr", ITEM_ATTRIBUTE_HDR},
};

uint32_t readTime(const JsonPlace& value) {
    std::tm time{};
    const char* end = strptime(value.text().c_str(), "%Y-%m-%d %H:%M:%S", &time);
    const int64_t seconds = end != nullptr && *end == '\0' ? int64_t{timegm(&time)} : -1;
    if (seconds < 0 || seconds > kAny) {
        value.fail("must be a UTC time such as \"2024-05-31 18:04:00\"");
    }
    return static_cast<uint32_t>(seconds);
}

db_gumi readGumi(const JsonPlace& value) {
    db_gumi gumi{};
    const std::string& digits = value.text();
    bool sound = digits.size() == 2 * kGumiSize;
    for (std::size_t i = 0; sound && i < kGumiSize; ++i) {
        const char* pair = digits.data() + 2 * i;
        const auto [end, error] = std::from_chars(pair, pair + 2, gumi.bytes[i], 16);
        sound = error == std::errc{} && end == pair + 2;
    }
    if (!sound) {
        value.fail("must be 32 hexadecimal digits");
    }
    return gumi;
}

uint32_t readAttributes(const JsonPlace& value) {
    uint32_t bits = 0;
    for (const JsonPlace& flag : value.elements()) {
        const auto* attribute = std::ranges::find(kAttributes, flag.text(), &Attribute::name);
        if (attribute == std::end(kAttributes)) {
            flag.fail("is no flag");
        }
        bits |= attribute->bits;
    }
    return bits;
}

void setContentType(const JsonPlace& value, MediaItem& item) {
    const uint32_t contentType = readContentType(value);
    const uint32_t current = item.contentType();
    if (contentType != current && (isVideoGroup(contentType) || isVideoGroup(current) ||
                                   isPhotoGroup(contentType) != isPhotoGroup(current))) {
        value.fail("does not fit the file's name");
    }
    for (MediaFile& file : item.files) {
        file.record.content_type = contentType;
    }
}

void setHighlights(const JsonPlace& value, MediaItem& item, MediaFile& file) {
    const bool ofNumbers = isPhotoGroup(item.contentType());
    std::vector<uint32_t> highlights;
    for (const JsonPlace& highlight : value.elements()) {
        highlights.push_back(highlight.number(kAny));
        if (ofNumbers &&
            (highlights.back() < item.firstNumber || highlights.back() > item.lastNumber ||
             std::ranges::count(highlights, highlights.back()) > 1)) {
            highlight.fail("must be a number of the group, once");
        }
    }
    if (!ofNumbers && highlights.size() > kHighlightsMax) {
        value.fail("must be at most " + std::to_string(kHighlightsMax));
    }
    (ofNumbers ? item.highlightedNumbers : file.highlights) = std::move(highlights);
}

void setSession(const JsonPlace& value, MediaItem& item) {
    item.isSessionFile = value.boolean();
    if (item.isSessionFile && isGroup(item.contentType())) {
        value.fail("must not be true for a group");
    }
}

void setFrameRate(const JsonPlace& value, MediaFile& file) {
    const auto parts = value.elements();
    if (parts.size() != 2) {
        value.fail("must be a numerator and a denominator");
    }
    file.moreInfo.frame_rate_numerator = parts[0].number(kAny);
    file.moreInfo.frame_rate_denominator = parts[1].number(kAny);
}

struct OtherMember {
    std::string_view name;
    void (*set)(const JsonPlace&, MediaItem&, MediaFile&);
};

constexpr OtherMember kOtherMembers[] = {
    {kContentTypeMember,
     [](const JsonPlace& value, MediaItem& item, MediaFile&) { setContentType(value, item); }},
    {"created",
     [](const JsonPlace& value, MediaItem&, MediaFile& f) { f.record.created = readTime(value); }},
    {"modified",
     [](const JsonPlace& value, MediaItem&, MediaFile& f) { f.record.modified = readTime(value); }},
    {"flags",
     [](const JsonPlace& value, MediaItem&, MediaFile& f) {
         f.record.attributes = f.record.attributes | readAttributes(value);
     }},
    {"highlights", setHighlights},
    {"session",
     [](const JsonPlace& value, MediaItem& item, MediaFile&) { setSession(value, item); }},
    {"gumi", [](const JsonPlace& value, MediaItem&, MediaFile& f) { f.gumi = readGumi(value); }},
    {"parent_gumi",
     [](const JsonPlace& value, MediaItem&, MediaFile& f) {
         f.parentGumi = readGumi(value);
         f.record.attributes = f.record.attributes | ITEM_ATTRIBUTE_PARENT_GUMI;
     }},
    {"frame_rate",
     [](const JsonPlace& value, MediaItem&, MediaFile& f) { setFrameRate(value, f); }},
};

template <typename Members>
auto findMember(const Members& members, std::string_view name) {
    const auto* member =
        std::ranges::find(members, name, &std::ranges::range_value_t<Members>::name);
    return member == std::end(members) ? nullptr : member;
}

}  // namespace

uint32_t readContentType(const JsonPlace& value) {
    return value.number(DB_CONTENT_TYPE_LAST);
}

void setMissing(const JsonPlace& numbers, MediaItem& item) {
    if (!isGroup(item.contentType())) {
        numbers.fail("belongs to groups only");
    }
    for (const JsonPlace& place : numbers.elements()) {
        const uint32_t number = place.number(kNumberMax);
        item.firstNumber = std::min(item.firstNumber, number);
        item.lastNumber = std::max(item.lastNumber, number);
        std::erase_if(item.files, [&](const MediaFile& file) { return file.number == number; });
        if (item.files.empty()) {
            place.fail("is the group's last file");
        }
        if (item.lastNumber - item.firstNumber >= kSpanMax) {
            place.fail("is too far from the group's other numbers");
        }
    }
}

void setFileMember(const std::string& name, const JsonPlace& value, MediaItem& item,
                   MediaFile& file) {
    if (const auto* number = findMember(kNumberMembers, name)) {
        number->field(file) = value.number(number->max);
    } else if (const auto* flag = findMember(kFlagMembers, name)) {
        flag->field(file) = value.boolean() ? 1 : 0;
    } else if (const auto* other = findMember(kOtherMembers, name)) {
        other->set(value, item, file);
    } else {
        value.fail("is not known");
    }
}

}  // namespace simulator

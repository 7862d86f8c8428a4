#include "simulator/card/media_name.h"

#include <algorithm>

#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>

namespace simulator {

namespace {

// Whether every character of name has the kind that its pattern character asks for: 'A' a capital
// letter, '0' a digit, '*' anything, else the character itself.
bool hasForm(std::string_view name, std::string_view pattern) {
    return std::ranges::equal(name, pattern, [](char c, char kind) {
        switch (kind) {
            case 'A':
                return c >= 'A' && c <= 'Z';
            case '0':
                return c >= '0' && c <= '9';
            case '*':
                return true;
            default:
                return c == kind;
        }
    });
}

uint32_t numberAt(std::string_view name, std::size_t place, std::size_t digits) {
    uint32_t number = 0;
    for (const char digit : name.substr(place, digits)) {
        number = number * 10 + static_cast<uint32_t>(digit - '0');
    }
    return number;
}

// Videos and photos may share what groups them, not the group.
std::string keyOf(std::string_view group, std::string_view name) {
    return std::string(group).append(name.substr(8));
}

// Two letters from place 2 on count groups from 1001 (AA); the members are numbered from 1.
std::optional<MediaName> letterGroup(std::string_view name, std::string_view kinds,
                                     uint32_t contentType) {
    if (!hasForm(name.substr(0, 8), "VAAA0000") || kinds.find(name[1]) == std::string_view::npos ||
        numberAt(name, 4, 4) == 0) {
        return std::nullopt;
    }
    const auto first = static_cast<uint32_t>(name[2] - 'A');
    const auto second = static_cast<uint32_t>(name[3] - 'A');
    return MediaName{contentType, keyOf(name.substr(0, 4), name), 1001 + first * 26 + second,
                     numberAt(name, 4, 4)};
}

std::optional<MediaName> numberGroup(std::string_view name, uint32_t contentType) {
    if (!hasForm(name.substr(0, 8), "A0000000")) {
        return std::nullopt;
    }
    return MediaName{contentType, keyOf(name.substr(0, 4), name), numberAt(name, 1, 3),
                     numberAt(name, 4, 4)};
}

std::optional<MediaName> chapter(std::string_view name, bool oneBased) {
    const bool isFirst = hasForm(name, "VXMF0000.MP4");
    if (!isFirst && !hasForm(name.substr(0, 8), "VA000000")) {
        return std::nullopt;
    }
    const uint32_t printed = isFirst ? (oneBased ? 1 : 0) : numberAt(name, 2, 2);
    if (oneBased && printed == 0) {
        return std::nullopt;
    }
    const std::string letterAndFile = {name[1], name[4], name[5], name[6], name[7]};
    return MediaName{DB_CONTENT_TYPE_CHAPTERED_VIDEO, keyOf(letterAndFile, name),
                     numberAt(name, 4, 4), oneBased ? printed - 1 : printed};
}

std::optional<MediaName> video(std::string_view name, bool oneBasedChapters) {
    std::optional<MediaName> group = chapter(name, oneBasedChapters);
    if (!group && name.ends_with(".MP4")) {
        group = letterGroup(name, "HLMX", DB_CONTENT_TYPE_GROUPED_VIDEO);
    }
    if (!group && name.ends_with(".MP4")) {
        group = numberGroup(name, DB_CONTENT_TYPE_GROUPED_VIDEO);
    }
    return group ? group : MediaName{DB_CONTENT_TYPE_SINGLE_VIDEO};
}

std::optional<MediaName> photo(std::string_view name) {
    std::optional<MediaName> group = letterGroup(name, "PS", DB_CONTENT_TYPE_TIME_LAPSE_PHOTO);
    if (!group) {
        group = numberGroup(name, DB_CONTENT_TYPE_BURST);
    }
    return group ? group : MediaName{DB_CONTENT_TYPE_SINGLE_PHOTO};
}

}  // namespace

std::optional<MediaName> parseMediaName(std::string_view name, bool oneBasedChapters) {
    if (hasForm(name, "********.MP4") || hasForm(name, "********.360")) {
        return video(name, oneBasedChapters);
    }
    if (hasForm(name, "********.JPG")) {
        return photo(name);
    }
    return std::nullopt;
}

}  // namespace simulator

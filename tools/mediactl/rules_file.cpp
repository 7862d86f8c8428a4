#include "tools/mediactl/rules_file.h"

#include <algorithm>
#include <array>
#include <limits>

#include "simulator/card/input_file.h"
#include "simulator/card/json_place.h"

namespace mediactl {

namespace {

using simulator::JsonPlace;

constexpr uint32_t kUnlimited = std::numeric_limits<uint32_t>::max();
constexpr uint32_t kMaxScore = 127;
constexpr uint32_t kMaxStatus = UPLOAD_RULE_STATUS_4 - UPLOAD_RULE_STATUS_0;

// A kind of condition rule and the ranges it looks at.
struct Media {
    const char* name;
    UploadRuleKind kind;
    bool score = false;
    bool duration = false;
    bool count = false;
};

constexpr std::array kMedia = {
    Media{"any", UPLOAD_RULE_ANY},
    Media{.name = "photo", .kind = UPLOAD_RULE_PHOTO, .score = true},
    Media{.name = "video", .kind = UPLOAD_RULE_VIDEO, .score = true, .duration = true},
    Media{.name = "user_video_clip", .kind = UPLOAD_RULE_USER_VIDEO_CLIP, .score = true},
    Media{.name = "auto_video_clip", .kind = UPLOAD_RULE_AUTO_VIDEO_CLIP, .score = true},
    Media{.name = "time_lapse", .kind = UPLOAD_RULE_TIME_LAPSE, .duration = true, .count = true},
    Media{"burst", UPLOAD_RULE_BURST},
    Media{.name = "continuous", .kind = UPLOAD_RULE_CONTINUOUS, .count = true},
    Media{"highlighted", UPLOAD_RULE_HIGHLIGHTED},
};

const Media& readMedia(const JsonPlace& place) {
    const auto* const media =
        std::ranges::find_if(kMedia, [&](const Media& m) { return m.name == place.text(); });
    if (media == kMedia.end()) {
        std::string names;
        for (const Media& m : kMedia) {
            names.append(names.empty() ? "" : ", ").append(m.name);
        }
        place.fail("must be one of " + names);
    }
    return *media;
}

void readRange(const JsonPlace& place, bool used, uint32_t most, uint32_t& min, uint32_t& max) {
    if (!used) {
        place.fail("means nothing for this kind of media");
    }
    place.forMembers([&](const std::string& name, const JsonPlace& value) {
        if (name != "min" && name != "max") {
            value.fail("is not known");
        }
        (name == "min" ? min : max) = value.number(most);
    });
    if (!place.member("min") && !place.member("max")) {
        place.fail("must have a min or a max");
    }
    if (min > max) {
        place.fail("holds for nothing: min is above max");
    }
}

UploadRule readRule(const JsonPlace& place) {
    const auto status = place.member("status");
    const auto media = place.member("media");
    if (status.has_value() == media.has_value()) {
        place.fail("must have either a status or a media");
    }
    UploadRule rule{.scoreMax = kUnlimited, .durationMax = kUnlimited, .countMax = kUnlimited};
    Media kind{};
    if (status) {
        rule.target = 1;
        rule.kind = UPLOAD_RULE_STATUS_0 + status->number(kMaxStatus);
    } else {
        kind = readMedia(*media);
        rule.kind = kind.kind;
    }
    place.forMembers([&](const std::string& name, const JsonPlace& value) {
        if (name == "name") {
            rule.name = value.text();
        } else if (name == "score") {
            readRange(value, kind.score, kMaxScore, rule.scoreMin, rule.scoreMax);
        } else if (name == "duration") {
            readRange(value, kind.duration, kUnlimited, rule.durationMin, rule.durationMax);
        } else if (name == "count") {
            readRange(value, kind.count, kUnlimited, rule.countMin, rule.countMax);
        } else if (name != "status" && name != "media") {
            value.fail("is not known");
        }
    });
    return rule;
}

}  // namespace

std::vector<UploadRule> readRules(const std::string& path) {
    std::ifstream file = simulator::openInput(path);
    const nlohmann::json document = simulator::readJson(file, path);
    std::vector<UploadRule> rules;
    bool found = false;
    JsonPlace(document, path).forMembers([&](const std::string& name, const JsonPlace& value) {
        if (name != "upload_rules") {
            value.fail("is not known");
        }
        found = true;
        for (const JsonPlace& rule : value.elements()) {
            rules.push_back(readRule(rule));
        }
    });
    if (!found) {
        JsonPlace(document, path).fail("upload_rules is missing");
    }
    return rules;
}

}  // namespace mediactl

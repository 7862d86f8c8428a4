// The rules by which the uploading side chooses its candidates.
#pragma once

#include <cstdint>
#include <string>

#include <mediacheckd/vxMediaRTOSDB/zep_item.h>

// What a condition rule asks of an item. "Score" is the item's score, or 100 for an item with a
// highlight; every range is inclusive.
enum UploadRuleKind : uint32_t {
    UPLOAD_RULE_ANY = 0,
    UPLOAD_RULE_PHOTO = 1,            // single and night photos, score
    UPLOAD_RULE_VIDEO = 2,            // single, grouped and chaptered videos, score and duration
    UPLOAD_RULE_USER_VIDEO_CLIP = 3,  // the same videos when they are clips, score
    UPLOAD_RULE_AUTO_VIDEO_CLIP = 4,  // as UPLOAD_RULE_USER_VIDEO_CLIP
    UPLOAD_RULE_NONE = 5,             // no item
    UPLOAD_RULE_TIME_LAPSE = 6,       // time-lapse videos, duration; lapses of photos, file count
    UPLOAD_RULE_BURST = 7,
    UPLOAD_RULE_CONTINUOUS = 8,    // file count
    UPLOAD_RULE_SESSION_FILE = 9,  // no item: type 7 is never a candidate
    UPLOAD_RULE_HIGHLIGHTED = 10,

    // The kinds of target rules: this one selects upload status 0, the next one status 1 and so on.
    UPLOAD_RULE_STATUS_0 = 11,
    UPLOAD_RULE_STATUS_4 = 15,
};

// One rule. A list of rules accepts an item when one of its target rules selects the item's upload
// status and one of its condition rules holds for the item, in whatever order. Items of type 7 and
// 11 are accepted by none.
struct UploadRule {
    uint8_t target = 0;  // non-zero for a target rule, which selects a status
    uint32_t kind = UPLOAD_RULE_ANY;
    std::string name = {};  // for people; matching does not read it
    uint32_t scoreMin = 0;
    uint32_t scoreMax = 0;
    uint32_t durationMin = 0;  // seconds
    uint32_t durationMax = 0;
    uint32_t countMin = 0;  // numbers of the group's first span, those without a file included
    uint32_t countMax = 0;
    uint32_t reserved = 0;
};

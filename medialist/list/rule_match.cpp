// Which items the upload rules select, singly and folded into spans.
#include "medialist/list/item_span.h"
#include <mediacheckd/medialist/zep_media_list.h>
#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>

namespace {

constexpr uint32_t kContentTypeUnused = 11;
constexpr uint32_t kHighlightScore = 100;

bool neverUploaded(uint32_t contentType) {
    return contentType == DB_CONTENT_TYPE_SESSION_FILE || contentType == kContentTypeUnused;
}

bool isPhoto(uint32_t contentType) {
    return contentType == DB_CONTENT_TYPE_SINGLE_PHOTO ||
           contentType == DB_CONTENT_TYPE_NIGHT_PHOTO;
}

// Single, grouped and chaptered videos.
bool isRecording(uint32_t contentType) {
    return contentType <= DB_CONTENT_TYPE_CHAPTERED_VIDEO;
}

bool isBurst(uint32_t contentType) {
    return contentType == DB_CONTENT_TYPE_BURST || contentType == DB_CONTENT_TYPE_BURST_VIDEO;
}

bool within(uint32_t value, uint32_t min, uint32_t max) {
    return min <= value && value <= max;
}

bool scoreFits(const UploadRule& rule, const zep_item_s& item) {
    const uint32_t score = item.highlight != 0 ? kHighlightScore : item.score;
    return within(score, rule.scoreMin, rule.scoreMax);
}

bool durationFits(const UploadRule& rule, const zep_item_s& item) {
    return within(item.duration_s, rule.durationMin, rule.durationMax);
}

bool countFits(const UploadRule& rule, const zep_item_s& item) {
    return within(fileCount(item), rule.countMin, rule.countMax);
}

bool selectsStatus(const UploadRule& rule, uint32_t uploadStatus) {
    return within(rule.kind, UPLOAD_RULE_STATUS_0, UPLOAD_RULE_STATUS_4) &&
           rule.kind - UPLOAD_RULE_STATUS_0 == uploadStatus;
}

bool conditionHolds(const UploadRule& rule, const zep_item_s& item) {
    const uint32_t type = item.content_type;
    switch (rule.kind) {
        case UPLOAD_RULE_ANY:
            return true;
        case UPLOAD_RULE_PHOTO:
            return isPhoto(type) && scoreFits(rule, item);
        case UPLOAD_RULE_VIDEO:
            return isRecording(type) && scoreFits(rule, item) && durationFits(rule, item);
        case UPLOAD_RULE_USER_VIDEO_CLIP:
        case UPLOAD_RULE_AUTO_VIDEO_CLIP:
            return isRecording(type) && item.clip != 0 && scoreFits(rule, item);
        case UPLOAD_RULE_TIME_LAPSE:
            return (type == DB_CONTENT_TYPE_TIME_LAPSE_VIDEO && durationFits(rule, item)) ||
                   (isSpanGroup(type) && countFits(rule, item));
        case UPLOAD_RULE_BURST:
            return isBurst(type);
        case UPLOAD_RULE_CONTINUOUS:
            return type == DB_CONTENT_TYPE_CONTINUOUS_PHOTO && countFits(rule, item);
        case UPLOAD_RULE_HIGHLIGHTED:
            return item.highlight != 0;
        default:
            return false;
    }
}

}  // namespace

int ZEPMediaList::matchRules(zep_item_s* item, std::vector<UploadRule>& rules) {
    if (neverUploaded(item->content_type)) {
        return 0;
    }
    bool statusSelected = false;
    bool conditionMet = false;
    for (const UploadRule& rule : rules) {
        if (rule.target != 0) {
            statusSelected = statusSelected || selectsStatus(rule, item->upload_status);
        } else {
            conditionMet = conditionMet || conditionHolds(rule, *item);
        }
        if (statusSelected && conditionMet) {
            return 1;
        }
    }
    return 0;
}

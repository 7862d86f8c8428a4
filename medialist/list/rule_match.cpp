#include "medialist/list/item_span.h"
#include "medialist/sort/media_class.h"
#include <mediacheckd/medialist/zep_media_list.h>
#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>

namespace {

constexpr uint32_t kContentTypeUnused = 11;
constexpr uint32_t kHighlightScore = 100;

bool neverUploaded(uint32_t contentType) {
    return contentType == DB_CONTENT_TYPE_SESSION_FILE || contentType == kContentTypeUnused;
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
    const MediaClass media = mediaClass(item.content_type, false);
    switch (rule.kind) {
        case UPLOAD_RULE_ANY:
            return true;
        case UPLOAD_RULE_PHOTO:
            return media == MEDIA_CLASS_PHOTO && scoreFits(rule, item);
        case UPLOAD_RULE_VIDEO:
            return media == MEDIA_CLASS_VIDEO && scoreFits(rule, item) && durationFits(rule, item);
        case UPLOAD_RULE_USER_VIDEO_CLIP:
        case UPLOAD_RULE_AUTO_VIDEO_CLIP:
            return media == MEDIA_CLASS_VIDEO && item.clip != 0 && scoreFits(rule, item);
        case UPLOAD_RULE_TIME_LAPSE:
            return media == MEDIA_CLASS_TIME_LAPSE &&
                   (item.content_type == DB_CONTENT_TYPE_TIME_LAPSE_VIDEO ? durationFits(rule, item)
                                                                          : countFits(rule, item));
        case UPLOAD_RULE_BURST:
            return media == MEDIA_CLASS_BURST;
        case UPLOAD_RULE_CONTINUOUS:
            return media == MEDIA_CLASS_CONTINUOUS && countFits(rule, item);
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

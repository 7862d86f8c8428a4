#include "libvxMediaRTOSDB/src/http/list/item_keys.h"

#include "libvxMediaRTOSDB/src/http/text/media_values.h"
#include "libvxMediaRTOSDB/src/http/text/video_keys.h"
#include "libvxMediaRTOSDB/src/names/group_number.h"
#include "libvxMediaRTOSDB/src/records/member_mask.h"
#include "libvxMediaRTOSDB/src/records/name_fields.h"

namespace {

void writeFileKeys(KeyWriter& keys, const db_item_record& item) {
    keys.text(FIELD_NAME, "n", textOf(item.file_name));
    keys.number(FIELD_MODIFIED, "mod", item.modified);
    keys.number(FIELD_CREATED, "cre", item.created);
    keys.number(FIELD_UPLOAD_STATUS, "us", item.upload_status);
    keys.flag(FIELD_TR, "tr", hasAttribute(item, ITEM_ATTRIBUTE_TR));
}

void writeGumiKeys(KeyWriter& keys, const ListItem& item) {
    if (!item.gumi) {
        return;
    }
    if (isValid(*item.gumi)) {
        keys.hex(FIELD_GUMI, "gumi", item.gumi->bytes);
    } else {
        keys.number(FIELD_DOES_NOT_EXIST, "DNE", 1);
    }
    if (item.parentGumi) {
        keys.hex(FIELD_PARENT_GUMI, "pgumi", item.parentGumi->bytes);
    }
}

// The keys of a recording that single videos and members share.
void writeRecordingKeys(KeyWriter& keys, const MemberRecord& recording) {
    const db_item_record& item = *recording.item;
    keys.flag(FIELD_PTA, "pta", hasAttribute(item, ITEM_ATTRIBUTE_PTA));
    keys.text(FIELD_AUDIO_OPTION, "ao", audioOption(item));
    keys.flag(FIELD_MP, "mp", hasAttribute(item, ITEM_ATTRIBUTE_MP));
    keys.number(FIELD_DURATION, "dur", durationSeconds(*recording.video));
    keys.number(FIELD_SCORE, "mahs", itemScore(item));
    keys.number(FIELD_HIGHLIGHT_COUNT, "hc", item.highlight_count);
    keys.list(FIELD_HIGHLIGHTS, "\"hi\":[", "]", [&](JoinedText& times) {
        for (const u32le& time : recording.highlights) {
            times.add(here(), asSigned(time));
        }
    });
}

void writeVideoKeys(KeyWriter& keys, const MemberRecord& video) {
    writeLs(keys, *video.video);
    keys.number(FIELD_CLIP, "cl", video.video->clip);
    writeRecordingKeys(keys, video);
}

void writePhotoKeys(KeyWriter& keys, const db_item_record& item) {
    keys.number(FIELD_HIGHLIGHT_COUNT, "hc", item.highlight_count);
    keys.flag(FIELD_HDR, "hdr", hasAttribute(item, ITEM_ATTRIBUTE_HDR));
    keys.flag(FIELD_WDR, "wdr", hasAttribute(item, ITEM_ATTRIBUTE_WDR));
    keys.flag(FIELD_RAW, "raw", hasAttribute(item, ITEM_ATTRIBUTE_RAW));
}

std::string_view groupLetter(uint32_t contentType) {
    switch (contentType) {
        case DB_CONTENT_TYPE_BURST:
            return "b";
        case DB_CONTENT_TYPE_TIME_LAPSE_PHOTO:
            return "t";
        case DB_CONTENT_TYPE_NIGHT_LAPSE_PHOTO:
            return "n";
        default:
            return "c";
    }
}

// Adds the numbers whose bit is clear, at most count of them, each followed by suffix.
void addUnmarked(JoinedText& numbers, const db_group_info& group, std::span<const uint8_t> mask,
                 uint32_t count, std::string_view suffix) {
    forEachUnmarked(group, mask, count, [&](uint32_t number) {
        numbers.add(here(), "\"", asSigned(number), "\"", suffix);
    });
}

void writePhotoGroupKeys(KeyWriter& keys, const ListItem& item, ListStyle style) {
    const db_group_info& group = *item.group;
    const uint32_t number = groupNumber(*item.record, group);  // logs one that it infers
    if (!keys.selects(FIELD_GROUP)) {
        return;
    }
    const uint32_t highlights = item.record->highlight_count;
    const auto addHighlighted = [&](std::string_view suffix) {
        return [&, suffix](JoinedText& numbers) {
            addUnmarked(numbers, group, item.highlightMask, highlights, suffix);
        };
    };

    keys.write(here(), FIELD_GROUP, "\"g\":\"", asSigned(number), "\",\"b\":\"",
               asSigned(group.first_number), "\",\"l\":\"", asSigned(group.last_number), "\"");
    keys.text(FIELD_GROUP, "t", groupLetter(item.record->content_type));
    keys.list(FIELD_GROUP, "\"m\":[", "]", [&](JoinedText& numbers) {
        addUnmarked(numbers, group, item.memberMask, group.num_missing, "");
    });
    if (style.countsGroupHighlights) {
        keys.number(FIELD_GROUP, "ghc", asSigned(highlights));
        keys.list(FIELD_GROUP, "\"ghi\":[", "]", addHighlighted(""));
    } else if (highlights != 0) {
        keys.list(FIELD_GROUP, "\"ghc\":{", "}", addHighlighted(":\"1\""));
    }
}

void writeKindKeys(KeyWriter& keys, const ListItem& item, ListStyle style) {
    switch (item.record->content_type) {
        case DB_CONTENT_TYPE_SINGLE_VIDEO:
        case DB_CONTENT_TYPE_GROUPED_VIDEO:
        case DB_CONTENT_TYPE_CHAPTERED_VIDEO:
        case DB_CONTENT_TYPE_TIME_LAPSE_VIDEO:
            writeVideoKeys(keys, {item.record, item.videoInfo, item.highlights});
            break;
        case DB_CONTENT_TYPE_SINGLE_PHOTO:
        case DB_CONTENT_TYPE_NIGHT_PHOTO:
            writePhotoKeys(keys, *item.record);
            break;
        case DB_CONTENT_TYPE_SESSION_FILE:
            keys.number(FIELD_HIGHLIGHT_COUNT, "hc", item.record->highlight_count);
            break;
        default:
            writePhotoGroupKeys(keys, item, style);
            break;
    }
}

}  // namespace

void writeItemKeys(KeyWriter& keys, const ListItem& item, ListStyle style) {
    writeFileKeys(keys, *item.record);
    writeGumiKeys(keys, item);
    writeKindKeys(keys, item, style);
    keys.number(FIELD_SIZE, "s", item.group ? item.group->group_size : item.record->size);
}

void writeMemberKeys(KeyWriter& keys, const MemberRecord& member, ListStyle style) {
    const auto writeSize = [&] {
        writeLs(keys, *member.video);
        keys.number(FIELD_SIZE, "s", member.item->size);
    };
    writeFileKeys(keys, *member.item);
    if (!style.memberSizeLast) {
        writeSize();
    }
    keys.flag(FIELD_EIS, "eis", hasAttribute(*member.item, ITEM_ATTRIBUTE_EIS));
    writeRecordingKeys(keys, member);
    if (style.memberSizeLast) {
        writeSize();
    }
}

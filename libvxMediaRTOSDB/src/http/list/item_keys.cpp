#include "libvxMediaRTOSDB/src/http/list/item_keys.h"

#include "libvxMediaRTOSDB/src/http/text/media_values.h"
#include "libvxMediaRTOSDB/src/http/text/video_keys.h"
#include "libvxMediaRTOSDB/src/names/group_number.h"
#include "libvxMediaRTOSDB/src/records/member_mask.h"
#include "libvxMediaRTOSDB/src/records/name_fields.h"

namespace {

void writeFileKeys(KeyWriter& keys, const db_item_record& item) {
    keys.text<"n">(FIELD_NAME, textOf(item.file_name));
    keys.number<"mod">(FIELD_MODIFIED, item.modified);
    keys.number<"cre">(FIELD_CREATED, item.created);
    keys.number<"us">(FIELD_UPLOAD_STATUS, item.upload_status);
    keys.flag<"tr">(FIELD_TR, hasAttribute(item, ITEM_ATTRIBUTE_TR));
}

void writeGumiKeys(KeyWriter& keys, const ListItem& item) {
    if (!item.gumi) {
        return;
    }
    if (isValid(*item.gumi)) {
        keys.hex<"gumi">(FIELD_GUMI, item.gumi->bytes);
    } else {
        keys.number<"DNE">(FIELD_DOES_NOT_EXIST, 1);
    }
    if (item.parentGumi) {
        keys.hex<"pgumi">(FIELD_PARENT_GUMI, item.parentGumi->bytes);
    }
}

// The keys of a recording that single videos and members share.
void writeRecordingKeys(KeyWriter& keys, const MemberRecord& recording) {
    const db_item_record& item = *recording.item;
    keys.flag<"pta">(FIELD_PTA, hasAttribute(item, ITEM_ATTRIBUTE_PTA));
    keys.word<"ao">(FIELD_AUDIO_OPTION, audioOption(item));
    keys.flag<"mp">(FIELD_MP, hasAttribute(item, ITEM_ATTRIBUTE_MP));
    keys.number<"dur">(FIELD_DURATION, durationSeconds(*recording.video));
    keys.number<"mahs">(FIELD_SCORE, itemScore(item));
    keys.number<"hc">(FIELD_HIGHLIGHT_COUNT, item.highlight_count);
    keys.list(FIELD_HIGHLIGHTS, "\"hi\":[", "]", [&](JoinedText& times) {
        for (const u32le& time : recording.highlights) {
            times.add(here(), asSigned(time));
        }
    });
}

void writeVideoKeys(KeyWriter& keys, const MemberRecord& video) {
    writeLs(keys, *video.video);
    keys.number<"cl">(FIELD_CLIP, video.video->clip);
    writeRecordingKeys(keys, video);
}

void writePhotoKeys(KeyWriter& keys, const db_item_record& item) {
    keys.number<"hc">(FIELD_HIGHLIGHT_COUNT, item.highlight_count);
    keys.flag<"hdr">(FIELD_HDR, hasAttribute(item, ITEM_ATTRIBUTE_HDR));
    keys.flag<"wdr">(FIELD_WDR, hasAttribute(item, ITEM_ATTRIBUTE_WDR));
    keys.flag<"raw">(FIELD_RAW, hasAttribute(item, ITEM_ATTRIBUTE_RAW));
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
    keys.word<"t">(FIELD_GROUP, groupLetter(item.record->content_type));
    keys.list(FIELD_GROUP, "\"m\":[", "]", [&](JoinedText& numbers) {
        addUnmarked(numbers, group, item.memberMask, group.num_missing, "");
    });
    if (style.countsGroupHighlights) {
        keys.number<"ghc">(FIELD_GROUP, asSigned(highlights));
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
            keys.number<"hc">(FIELD_HIGHLIGHT_COUNT, item.record->highlight_count);
            break;
        default:
            writePhotoGroupKeys(keys, item, style);
            break;
    }
}

}  // namespace

// The writers of one function each: the end of the text then stays in a register, instead of being
// stored and read again for each key.
[[gnu::flatten]] void writeItemKeys(TextBuffer* object, uint32_t fieldMask, const ListItem& item,
                                    ListStyle style) {
    KeyWriter keys(object, fieldMask, "");
    writeFileKeys(keys, *item.record);
    writeGumiKeys(keys, item);
    writeKindKeys(keys, item, style);
    keys.number<"s">(FIELD_SIZE, item.group ? item.group->group_size : item.record->size);
}

[[gnu::flatten]] void writeMemberKeys(TextBuffer* object, uint32_t fieldMask,
                                      const MemberRecord& member, ListStyle style) {
    KeyWriter keys(object, fieldMask, "");
    const auto writeSize = [&] {
        writeLs(keys, *member.video);
        keys.number<"s">(FIELD_SIZE, member.item->size);
    };
    writeFileKeys(keys, *member.item);
    if (!style.memberSizeLast) {
        writeSize();
    }
    keys.flag<"eis">(FIELD_EIS, hasAttribute(*member.item, ITEM_ATTRIBUTE_EIS));
    writeRecordingKeys(keys, member);
    if (style.memberSizeLast) {
        writeSize();
    }
}

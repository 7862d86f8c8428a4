#include "libvxMediaRTOSDB/src/records/item_reader.h"

#include "libvxMediaRTOSDB/src/records/member_mask.h"
#include "libvxMediaRTOSDB/src/records/record_reader.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

ItemStatus readMask(RecordReader& reader, const db_group_info& group,
                    std::span<const uint8_t>* mask) {
    if (reader.offset() + maskSize(group) > kResponseBufferSize) {
        return ItemStatus::kMaskTooLarge;
    }
    const auto bytes = reader.readArray<uint8_t>(maskSize(group));
    if (!bytes) {
        return ItemStatus::kTooSmall;
    }
    *mask = *bytes;
    return ItemStatus::kOk;
}

ItemStatus readGroup(RecordReader& reader, ListItem* item) {
    item->group = reader.read<db_group_info>();
    if (!item->group) {
        return ItemStatus::kTooSmall;
    }
    if (item->group->num_missing != 0) {
        const ItemStatus status = readMask(reader, *item->group, &item->memberMask);
        if (status != ItemStatus::kOk) {
            return status;
        }
    }
    if (isPhotoGroup(item->record->content_type) && item->record->highlight_count != 0) {
        return readMask(reader, *item->group, &item->highlightMask);
    }
    return ItemStatus::kOk;
}

ItemStatus readVideo(RecordReader& reader, ListItem* item) {
    item->videoInfo = reader.read<db_video_specific_info>();
    if (!item->videoInfo) {
        return ItemStatus::kTooSmall;
    }
    const auto highlights = reader.readArray<u32le>(item->videoInfo->highlight_count);
    if (!highlights) {
        return ItemStatus::kTooSmall;
    }
    item->highlights = *highlights;
    return ItemStatus::kOk;
}

ItemStatus readExtension(RecordReader& reader, const ItemLayout& layout, ListItem* item) {
    const uint32_t contentType = item->record->content_type;
    if (isPhotoGroup(contentType) || (isVideoGroup(contentType) && layout.groupedVideos)) {
        return readGroup(reader, item);
    }
    return isVideo(contentType) ? readVideo(reader, item) : ItemStatus::kOk;
}

// Reads the identifiers and the further picture information that the page's options ask for.
ItemStatus readOptionalRecords(RecordReader& reader, const ItemLayout& layout, ListItem* item) {
    if (layout.listOptions & LIST_OPTION_INCLUDE_GUMI) {
        item->gumi = reader.read<db_gumi>();
        if (!item->gumi) {
            return ItemStatus::kTooSmall;
        }
        if (item->record->attributes & layout.parentGumiAttributes) {
            item->parentGumi = reader.read<db_gumi>();
            if (!item->parentGumi) {
                return ItemStatus::kTooSmall;
            }
        }
    }
    if (layout.listOptions & LIST_OPTION_INCLUDE_MORE_INFO) {
        item->moreInfo = reader.read<db_more_info>();
        if (!item->moreInfo) {
            return ItemStatus::kTooSmall;
        }
    }
    return ItemStatus::kOk;
}

}  // namespace

void logDamagedGroup(const ListItem& item) {
    UTIL_LOG(UTIL_LOG_ERROR, "damaged group %.8s/%.12s: first_number %d, last_number %d\n",
             item.record->dir_name, item.record->file_name, signedWord(item.group->first_number),
             signedWord(item.group->last_number));
}

ItemStatus readListItem(std::span<const uint8_t> response, size_t* offset, const ItemLayout& layout,
                        ListItem* item) {
    // By parts: at its whole size a compiler clears it in a way that costs more than all the rest.
    static_cast<PlainParts&>(*item) = {};
    static_cast<VideoParts&>(*item) = {};
    static_cast<GroupParts&>(*item) = {};
    RecordReader reader(response, *offset);
    item->record = reader.read<db_item_record>();
    if (!item->record) {
        return ItemStatus::kTooSmall;
    }
    if (item->record->content_type > DB_CONTENT_TYPE_LAST) {
        return ItemStatus::kInvalidContentType;
    }

    ItemStatus status = readOptionalRecords(reader, layout, item);
    if (status == ItemStatus::kOk) {
        status = readExtension(reader, layout, item);
    }
    if (status != ItemStatus::kOk) {
        return status;
    }
    *offset = reader.offset();
    if (item->group && isDamaged(*item->group)) {
        logDamagedGroup(*item);
    }
    return ItemStatus::kOk;
}

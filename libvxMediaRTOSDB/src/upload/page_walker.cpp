#include <mediacheckd/vxMediaRTOSDB/page_walker.h>

#include <algorithm>

#include "libvxMediaRTOSDB/src/exchange/db_checks.h"
#include "libvxMediaRTOSDB/src/log/util_assert.h"
#include "libvxMediaRTOSDB/src/names/member_names.h"
#include "libvxMediaRTOSDB/src/records/hex_digits.h"
#include "libvxMediaRTOSDB/src/records/item_reader.h"
#include "libvxMediaRTOSDB/src/records/member_mask.h"
#include "libvxMediaRTOSDB/src/records/name_fields.h"
#include "libvxMediaRTOSDB/src/records/record_reader.h"
#include "libvxMediaRTOSDB/src/upload/video_duration.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

struct Callbacks {
    zep_item_callback item;
    void* itemContext;
    zep_file_callback file;
    void* fileContext;
};

using GumiText = std::array<char, 2 * kGumiSize + 1>;

// Returns the text.
const char* writeGumi(const db_gumi& gumi, GumiText* text) {
    const auto digits = hexDigits(std::span(gumi.bytes), HexCase::kUpper);
    *std::ranges::copy(digits, text->begin()).out = '\0';
    return text->data();
}

// What the items of one page share: the rule of the chapters' numbers, and whether the database has
// fallen silent, which would cost all tries again for each further duration.
struct PageState {
    ChapterNumbers chapters;
    bool silent = false;
};

uint64_t groupDurationMs(const ListItem& item, const char* dirName, PageState& page) {
    const MemberNames names(*item.record, item.group->group_number, MemberNameUse::kDurations,
                            page.chapters);
    uint64_t total = 0;
    forEachMember(*item.group, item.memberMask, [&](uint32_t member) {
        if (page.silent) {
            return;
        }
        uint32_t duration = 0;
        page.silent = !getVideoDuration(dirName, names.name(member).data(), &duration);
        total += duration;
    });
    return total;
}

uint32_t durationSeconds(const ListItem& item, const char* dirName, PageState& page) {
    uint64_t duration = 0;
    if (item.videoInfo) {
        duration = item.videoInfo->duration_ms;
    } else if (isVideoGroup(item.record->content_type)) {
        duration = groupDurationMs(item, dirName, page);
    }
    return static_cast<uint32_t>((duration + 500) / 1000);
}

void logGroup(const ListItem& item) {
    const db_group_info& group = *item.group;
    UTIL_LOG(UTIL_LOG_DEBUG, "\n\ngroupInfo->group_number, %d\n", signedWord(group.group_number));
    UTIL_LOG(UTIL_LOG_DEBUG, "groupInfo->first_number, %d\n", signedWord(group.first_number));
    UTIL_LOG(UTIL_LOG_DEBUG, "groupInfo->last_number, %d\n", signedWord(group.last_number));
    UTIL_LOG(UTIL_LOG_DEBUG, "groupInfo->num_missing, %d\n", signedWord(group.num_missing));
    UTIL_LOG(UTIL_LOG_DEBUG, "groupInfo->group_size, %llu\n",
             static_cast<unsigned long long>(group.group_size));
    if (item.memberMask.empty()) {
        return;
    }
    UTIL_LOG(UTIL_LOG_DEBUG, "missing:");
    for (const uint8_t byte : item.memberMask) {
        UTIL_LOG(UTIL_LOG_DEBUG, "%02X ", byte);
    }
}

void deliverGroupFiles(const ListItem& item, char* dirName, const char* itemName,
                       const Callbacks& callbacks, PageState& page) {
    logGroup(item);
    const MemberNames names(*item.record, item.group->group_number, MemberNameUse::kFiles,
                            page.chapters);
    UTIL_LOG(UTIL_LOG_DEBUG, "filename: %s format: %s\n", itemName, names.format().data());
    forEachMember(*item.group, item.memberMask, [&](uint32_t member) {
        callbacks.file(callbacks.fileContext, dirName, names.name(member).data());
    });
}

// The texts that a zep_item_s points to.
struct ItemTexts {
    std::array<char, kDirNameSize + 1> dirName;
    FileNameText fileName;
    GumiText gumi;
    GumiText parentGumi;
};

void describeGroup(const ListItem& item, zep_item_s* zepItem) {
    const db_group_info& group = *item.group;
    zepItem->group_number = group.group_number;
    zepItem->first_number = group.first_number;
    zepItem->last_number = group.last_number;
    zepItem->member_mask = item.memberMask.data();
    zepItem->size_bytes = group.group_size;
}

zep_item_s describe(const ListItem& item, ItemTexts* texts, PageState& page) {
    const db_item_record& record = *item.record;
    terminate(record.dir_name, &texts->dirName);
    terminate(record.file_name, &texts->fileName);

    zep_item_s zepItem = {};
    zepItem.gumi = item.gumi ? writeGumi(*item.gumi, &texts->gumi) : nullptr;
    zepItem.parent_gumi =
        item.parentGumi ? writeGumi(*item.parentGumi, &texts->parentGumi) : nullptr;
    zepItem.content_type = record.content_type;
    zepItem.upload_status = record.upload_status;
    zepItem.highlight = record.highlight_count;
    zepItem.score = itemScore(record);
    zepItem.timestamp = record.created;
    zepItem.size_bytes = record.size;
    zepItem.dir_name = texts->dirName.data();
    zepItem.file_name = texts->fileName.data();
    if (item.group) {
        describeGroup(item, &zepItem);
    }
    zepItem.duration_s = durationSeconds(item, zepItem.dir_name, page);
    zepItem.clip = item.videoInfo && item.videoInfo->clip != 0;
    return zepItem;
}

void deliverItem(const ListItem& item, const Callbacks& callbacks, PageState& page) {
    ItemTexts texts;
    zep_item_s zepItem = describe(item, &texts, page);
    if (callbacks.item) {
        callbacks.item(callbacks.itemContext, &zepItem);
    }
    if (!callbacks.file) {
        return;
    }
    if (item.group) {
        deliverGroupFiles(item, texts.dirName.data(), texts.fileName.data(), callbacks, page);
    } else {
        callbacks.file(callbacks.fileContext, texts.dirName.data(), texts.fileName.data());
    }
}

}  // namespace

int processQueryResponse(const void* response, int bytesRead, uint32_t startingIndex,
                         zep_item_callback itemCallback, void* itemContext,
                         zep_file_callback fileCallback, void* fileContext) {
    const std::span page(static_cast<const uint8_t*>(response),
                         static_cast<size_t>(std::max(bytesRead, 0)));
    const auto header = wordsReceived<db_list_response_header>(page);
    const ItemLayout layout = {
        .listOptions = header.list_options,
        .parentGumiAttributes = ITEM_ATTRIBUTE_PARENT_GUMI | ITEM_ATTRIBUTE_TR,
        .groupedVideos = true,
    };
    const Callbacks callbacks = {itemCallback, itemContext, fileCallback, fileContext};

    const int count = signedWord(itemsOfPage(header, startingIndex));
    PageState state;
    size_t offset = sizeof header;
    for (int done = 0; done < count; ++done) {
        ListItem item;
        switch (readListItem(page, &offset, layout, &item)) {
            case ItemStatus::kOk:
                break;
            case ItemStatus::kTooSmall:
                UTIL_DEBUG_ERROR("Db response size too small.");
                return done;
            case ItemStatus::kMaskTooLarge:
                UTIL_LOG(UTIL_LOG_ERROR, "Mask size failed sanity check. Size=%d",
                         static_cast<int>(maskSize(*item.group)));
                return -1;
            case ItemStatus::kInvalidContentType:
                UTIL_LOG(UTIL_LOG_ERROR, "Invalid content type: %d\n",
                         signedWord(item.record->content_type));
                return -1;
        }
        deliverItem(item, callbacks, state);
    }
    return 0;
}

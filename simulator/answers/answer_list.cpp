// Pages of the media list.
#include <algorithm>
#include <limits>

#include "simulator/answers/answers.h"
#include "simulator/answers/item_records.h"

namespace simulator {

namespace {

constexpr uint32_t kKinds = QUERY_OPTION_VIDEO | QUERY_OPTION_PHOTO |
                            RTOS_DB_QUERY_METADATA_SESSION_FILES | QUERY_OPTION_RAW;

// One entry of a list: an item, or one file of a video group that is listed file by file.
struct Entry {
    const MediaItem* item;
    const MediaFile* file;
    bool asGroup;
};

struct CreatedRange {
    uint32_t first = 0;
    uint32_t last = std::numeric_limits<uint32_t>::max();

    [[nodiscard]] bool holds(const MediaItem& item) const {
        const uint32_t created = item.leader().record.created;
        return created >= first && created <= last;
    }
};

// The query options under which an item is listed.
uint32_t kindsOf(const MediaItem& item) {
    if (item.isSessionFile || item.contentType() == DB_CONTENT_TYPE_SESSION_FILE) {
        return RTOS_DB_QUERY_METADATA_SESSION_FILES;
    }
    const bool isRaw = (item.leader().record.attributes & ITEM_ATTRIBUTE_RAW) != 0;
    return (isVideo(item.contentType()) ? QUERY_OPTION_VIDEO : QUERY_OPTION_PHOTO) |
           (isRaw ? QUERY_OPTION_RAW : 0u);
}

// Without any kind asked for everything is listed.
bool isListed(const MediaItem& item, uint32_t queryOptions) {
    return (queryOptions & kKinds) == 0 || (queryOptions & kindsOf(item)) != 0;
}

std::vector<Entry> entriesOf(const Database& database, const db_list_request& request,
                             const CreatedRange& range = {}) {
    const bool groupVideos = (request.list_options & LIST_OPTION_VIDEO_GROUPING) != 0;
    std::vector<Entry> entries;
    for (const MediaItem& item : database.items()) {
        if (!isListed(item, request.query_options) || !range.holds(item)) {
            continue;
        }
        if (isVideoGroup(item.contentType()) && !groupVideos) {
            for (const MediaFile& file : item.files) {
                entries.push_back({&item, &file, false});
            }
        } else {
            entries.push_back({&item, &item.leader(), isGroup(item.contentType())});
        }
    }
    if ((request.list_options & LIST_OPTION_SORT_ORDER) != 0) {
        std::ranges::reverse(entries);
    }
    return entries;
}

Message entryRecords(const Entry& entry, uint32_t listOptions) {
    Message records;
    appendItemRecord(records, *entry.item, *entry.file);
    if ((listOptions & LIST_OPTION_INCLUDE_GUMI) != 0) {
        appendGumis(records, *entry.file);
    }
    if ((listOptions & LIST_OPTION_INCLUDE_MORE_INFO) != 0) {
        appendRecord(records, entry.file->moreInfo);
    }
    if (entry.asGroup) {
        appendGroupInfo(records, *entry.item);
    } else if (isVideo(entry.item->contentType())) {
        appendVideoInfo(records, *entry.file);
    }
    return records;
}

// As many of the entries wanted as one message holds.
Message page(const Database& database, const db_list_request& request,
             const std::vector<Entry>& entries) {
    db_list_response_header header{};
    header.start_index = request.starting_index;
    header.list_options = request.list_options;
    header.query_options = request.query_options;
    header.total_entries = static_cast<uint32_t>(entries.size());
    header.session_id = database.sessionId;

    Message records;
    uint32_t count = 0;
    for (std::size_t index = request.starting_index;
         index < entries.size() && count < request.header.request_count; ++index, ++count) {
        const Message entry = entryRecords(entries[index], request.list_options);
        if (!appendWhereItFits(records, entry, sizeof(header))) {
            break;
        }
    }
    header.header = responseHeader(request.header, DB_STATUS_OK, count);
    Message reply;
    appendRecord(reply, header);
    appendBytes(reply, records);
    return reply;
}

}  // namespace

Answer answerList(Database& database, Request request) {
    const auto list = readRecord<db_list_request>(request);
    if (!list) {
        return {};
    }
    return {page(database, *list, entriesOf(database, *list))};
}

// The two parameters select the items created from the first to the last of two times; 0 for the
// last: to this day.
Answer answerListWithParameters(Database& database, Request request) {
    const auto asked = readRecord<db_list_with_parameters_request>(request);
    if (!asked) {
        return {};
    }
    CreatedRange range{.first = asked->param1};
    if (asked->param2 != 0) {
        range.last = asked->param2;
    }
    return {page(database, asked->list, entriesOf(database, asked->list, range))};
}

}  // namespace simulator

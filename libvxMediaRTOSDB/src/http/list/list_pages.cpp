#include "libvxMediaRTOSDB/src/http/list/list_pages.h"

#include <algorithm>
#include <optional>
#include <span>

#include "libvxMediaRTOSDB/src/exchange/db_checks.h"
#include "libvxMediaRTOSDB/src/exchange/retry_pause.h"
#include "libvxMediaRTOSDB/src/http/list/group_members.h"
#include "libvxMediaRTOSDB/src/records/db_log.h"
#include "libvxMediaRTOSDB/src/records/item_reader.h"
#include "libvxMediaRTOSDB/src/records/member_mask.h"
#include "libvxMediaRTOSDB/src/records/name_fields.h"
#include "libvxMediaRTOSDB/src/records/request_header.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

constexpr int kMaxRetries = 10;
constexpr uint32_t kMaxItems = 1u << 18;

// Why an exchange failed, as the log tells it.
struct Failure {
    const char* retrying;  // the log's line before a retry
    const char* exiting;   // and when there are no more
    int value;
};

Failure sendFailed(int result) {
    return {"error on IPC received, retrying, ret %d\n", "error on IPC received, exiting, ret %d\n",
            result};
}

Failure receiveFailed(int received) {
    return {"error on IPC received, retrying, bytesRead %d\n",
            "error on IPC received, exiting, bytesRead %d\n", received};
}

Failure databaseFailed(uint32_t status) {
    return {"error on IPC received, retrying, status %d\n",
            "error on IPC received, exiting, status %d\n", signedWord(status)};
}

Failure contentTypeInvalid(uint32_t contentType) {
    return {"invalid content type, retrying, content_type %d\n",
            "invalid content type, exiting, content_type %d\n", signedWord(contentType)};
}

Failure firstItemCut(size_t received) {
    return {"first item of the page cut off, retrying, bytesRead %d\n",
            "first item of the page cut off, exiting, bytesRead %d\n", static_cast<int>(received)};
}

Failure pageEmpty(uint32_t startingIndex) {
    return {"no items before the list's end, retrying, starting_index %d\n",
            "no items before the list's end, exiting, starting_index %d\n",
            signedWord(startingIndex)};
}

// Returns the query option that selects a kind of media, 0 for a kind that is never listed.
uint32_t queryOptionOf(uint32_t contentType) {
    if (isOrdinaryVideo(contentType)) {
        return QUERY_OPTION_VIDEO;
    }
    if (contentType == DB_CONTENT_TYPE_SESSION_FILE) {
        return RTOS_DB_QUERY_METADATA_SESSION_FILES;
    }
    if (contentType <= DB_CONTENT_TYPE_CONTINUOUS_PHOTO) {
        return QUERY_OPTION_PHOTO;
    }
    return 0;
}

bool isListed(uint32_t contentType, uint32_t queryOptions) {
    const uint32_t option = queryOptionOf(contentType);
    return queryOptions == 0 ? option != 0 : (queryOptions & option) != 0;
}

void logMoreInfo(const db_more_info& info) {
    UTIL_LOG(UTIL_LOG_DEBUG, "Received db_more_info: \n");
    UTIL_LOG(UTIL_LOG_DEBUG, "    more_info.width = %d\n", signedWord(info.width));
    UTIL_LOG(UTIL_LOG_DEBUG, "    more_info.height = %d\n", signedWord(info.height));
    UTIL_LOG(UTIL_LOG_DEBUG, "    more_info.frame_rate_numerator = %d\n",
             signedWord(info.frame_rate_numerator));
    UTIL_LOG(UTIL_LOG_DEBUG, "    more_info.frame_rate_denominator = %d\n",
             signedWord(info.frame_rate_denominator));
    UTIL_LOG(UTIL_LOG_DEBUG, "    more_info.is_progressive = %d\n",
             signedWord(info.is_progressive));
    UTIL_LOG(UTIL_LOG_DEBUG, "    more_info.is_subsampled = %d\n", signedWord(info.is_subsampled));
}

void logUngroupedVideo(const db_item_record& item) {
    UTIL_LOG(UTIL_LOG_DEBUG,
             "videogrouping=0, Grouped video content type %d, for file %.08s/%.12s\n",
             signedWord(item.content_type), item.dir_name, item.file_name);
    UTIL_LOG(UTIL_LOG_DEBUG, "Treating file type %d as DB_CONTENT_TYPE_SINGLE_VIDEO\n",
             signedWord(item.content_type));
}

// Tells whether an item that could not be read whole is a group whose masks will never come: its
// numbers make no sense, or even a page of its own has no room for them.
bool hasImpossibleMasks(const ListItem& item, ItemStatus status, bool first) {
    return item.group && (isDamaged(*item.group) || (first && status == ItemStatus::kMaskTooLarge));
}

class ListPages {
  public:
    ListPages(rtosConnection* connection, const ListPlan& plan, FileGroups* groups)
        : mConnection(connection), mPlan(plan), mGroups(groups) {}

    int run();

    [[nodiscard]] ListProgress progress() const { return {mNextIndex, mTotalEntries, mSessionId}; }

  private:
    void restart();
    std::optional<Failure> exchange(int* received);
    std::optional<Failure> listPage();
    std::optional<Failure> listItems(std::span<const uint8_t> page, uint32_t count,
                                     uint32_t listOptions);
    std::optional<Failure> planNextRequest(uint32_t totalEntries);
    void listItem(const ListItem& item);
    void listMembers(const ListItem& item);
    void logListRequest() const;

    rtosConnection* mConnection;
    const ListPlan& mPlan;
    FileGroups* mGroups;
    int mStatus = HTTP_OK;
    db_list_with_parameters_request mRequest = {};
    uint64_t mNextIndex = 0;
    uint32_t mTotalEntries = 0;
    uint32_t mSessionId = 0;
    uint32_t mRequests = 0;
    bool mComplete = false;
    uint8_t mResponse[kResponseBufferSize];
};

int ListPages::run() {
    restart();
    int retries = 0;
    while (!mComplete && mRequests < mPlan.maxRequests && mStatus == HTTP_OK) {
        const auto failure = listPage();
        if (!failure) {
            continue;
        }
        if (retries++ == kMaxRetries) {
            UTIL_LOG(UTIL_LOG_ERROR, failure->exiting, failure->value);
            return HTTP_INTERNAL_ERROR;
        }
        retryPause();
        UTIL_LOG(UTIL_LOG_WARN, failure->retrying, failure->value);
        restart();
    }
    return mStatus;
}

void ListPages::restart() {
    mRequest = mPlan.firstRequest;
    mRequest.list.header.token = tokenOf(&mRequest);
    mNextIndex = mRequest.list.starting_index;
    mRequests = 0;
    mComplete = false;
    mGroups->restart();
}

std::optional<Failure> ListPages::exchange(int* received) {
    logListRequest();
    const int sent = rtosConnectionSend(mConnection, &mRequest, mPlan.requestSize);
    if (sent < 0) {
        return sendFailed(sent);
    }
    *received = rtosConnectionRecv(mConnection, mResponse, sizeof mResponse);
    const auto& header = *reinterpret_cast<const db_response_header*>(mResponse);
    if (holdsResponseHeader(*received) && header.status != 0) {
        return databaseFailed(header.status);
    }
    if (*received < static_cast<int>(sizeof(db_list_response_header))) {
        return receiveFailed(*received);
    }
    return std::nullopt;
}

std::optional<Failure> ListPages::listPage() {
    int received = 0;
    if (const auto failure = exchange(&received)) {
        return failure;
    }
    ++mRequests;

    auto& header = *reinterpret_cast<db_list_response_header*>(mResponse);
    mTotalEntries = header.total_entries;
    mSessionId = header.session_id;
    logResponse(header);
    correctCount(mRequest.list.header, &header.header, UTIL_LOG_WARN);
    checkToken(header.header.token, mRequest.list.header);
    const uint32_t count = itemsOfPage(header, mRequest.list.starting_index);
    if (const auto failure =
            listItems({mResponse, static_cast<size_t>(received)}, count, header.list_options)) {
        return failure;
    }
    if (!mGroups->complete()) {
        mStatus = HTTP_INTERNAL_ERROR;
    }
    return planNextRequest(header.total_entries);
}

// An item that does not lie wholly inside a page is the first one of the next page, but for a group
// whose masks no response can hold: it is listed without members, and the next page starts behind
// it. Members that could not be fetched end the page: each further group would wait for the
// database as long.
std::optional<Failure> ListPages::listItems(std::span<const uint8_t> page, uint32_t count,
                                            uint32_t listOptions) {
    const ItemLayout layout = {
        .listOptions = listOptions,
        .parentGumiAttributes = ITEM_ATTRIBUTE_PARENT_GUMI,
        .groupedVideos = (listOptions & LIST_OPTION_VIDEO_GROUPING) != 0,
    };
    size_t offset = sizeof(db_list_response_header);
    for (uint32_t i = 0; i < count && mStatus == HTTP_OK; ++i) {
        ListItem item;
        const ItemStatus itemStatus = readListItem(page, &offset, layout, &item);
        if (itemStatus != ItemStatus::kOk) {
            const bool first = i == 0;
            if (itemStatus == ItemStatus::kInvalidContentType) {
                return contentTypeInvalid(item.record->content_type);
            }
            if (!hasImpossibleMasks(item, itemStatus, first)) {
                return first ? std::optional(firstItemCut(page.size())) : std::nullopt;
            }
            logDamagedGroup(item);
            offset = page.size();  // where the next item starts cannot be told
        }
        listItem(item);
        ++mNextIndex;
    }
    return std::nullopt;
}

std::optional<Failure> ListPages::planNextRequest(uint32_t totalEntries) {
    db_list_request& next = mRequest.list;
    const uint64_t walked = mNextIndex - mPlan.firstRequest.list.starting_index;
    const uint64_t wanted = mPlan.maxItems != 0 ? mPlan.maxItems : UINT64_MAX;
    mComplete = mNextIndex >= totalEntries || walked >= wanted || next.header.request_count == 0;
    // Behind the last page that may be asked for nothing is expected any more.
    if (mComplete || mStatus != HTTP_OK || mRequests >= mPlan.maxRequests) {
        return std::nullopt;
    }
    if (mNextIndex == next.starting_index) {
        return pageEmpty(next.starting_index);
    }
    if (walked >= kMaxItems) {
        UTIL_LOG(UTIL_LOG_ERROR, "no end after %d of %d items, exiting\n", signedWord(kMaxItems),
                 signedWord(totalEntries));
        mStatus = HTTP_INTERNAL_ERROR;
    }
    const db_list_request& measure = mPlan.asksForAsManyAgain ? mPlan.firstRequest.list : next;
    const uint32_t most = measure.header.request_count;
    const uint64_t left = uint64_t{totalEntries} + 1 - mNextIndex;
    next.header.request_count =
        static_cast<uint32_t>(std::min({uint64_t{most}, left, wanted - walked}));
    next.starting_index = static_cast<uint32_t>(mNextIndex);
    return std::nullopt;
}

void ListPages::listItem(const ListItem& item) {
    const db_item_record& record = *item.record;
    if (item.moreInfo) {
        logMoreInfo(*item.moreInfo);
    }
    mGroups->enter(textOf(record.dir_name));
    if (!isListed(record.content_type, mRequest.list.query_options)) {
        return;
    }
    if (isVideoGroup(record.content_type)) {
        if (item.group) {
            listMembers(item);
            return;
        }
        logUngroupedVideo(record);
    }
    writeItemKeys(mGroups->beginFile(), mPlan.fieldMask, item, mPlan.style);
    mGroups->endFile();
}

void ListPages::listMembers(const ListItem& item) {
    GroupMembers members(mConnection, item);
    MemberRecord member;
    MemberAnswer answer = members.next(&member);
    for (; answer == MemberAnswer::kAnswered; answer = members.next(&member)) {
        writeMemberKeys(mGroups->beginFile(), mPlan.fieldMask, member, mPlan.style);
        mGroups->endFile();
    }
    if (answer == MemberAnswer::kFailed) {
        mStatus = HTTP_INTERNAL_ERROR;
    }
}

void ListPages::logListRequest() const {
    const db_list_request& list = mRequest.list;
    if (!mPlan.logsParameters) {
        logRequest(list);
        return;
    }
    const uint32_t listOptions = list.list_options;
    const uint32_t queryOptions = list.query_options;
    const uint32_t param1 = mRequest.param1;
    const uint32_t param2 = mRequest.param2;
    UTIL_LOG(UTIL_LOG_DEBUG,
             "dbGetPagedList() req->command_type:%d, list_options:0x%x,%d, query_options:0x%x,%d, "
             "param1:0x%x,%d, param2:0x%x,%d",
             signedWord(list.header.command_type), listOptions, signedWord(listOptions),
             queryOptions, signedWord(queryOptions), param1, signedWord(param1), param2,
             signedWord(param2));
    logRequest(mRequest);
}

}  // namespace

int listPages(rtosConnection* connection, const ListPlan& plan, FileGroups* groups,
              ListProgress* progress) {
    ListPages pages(connection, plan, groups);
    const int status = pages.run();
    if (progress) {
        *progress = pages.progress();
    }
    return status;
}

#include "libvxMediaRTOSDB/src/http/list/group_members.h"

#include <algorithm>

#include "libvxMediaRTOSDB/src/exchange/db_checks.h"
#include "libvxMediaRTOSDB/src/files/status_query.h"
#include "libvxMediaRTOSDB/src/names/group_number.h"
#include "libvxMediaRTOSDB/src/records/db_log.h"
#include "libvxMediaRTOSDB/src/records/member_mask.h"
#include "libvxMediaRTOSDB/src/records/name_fields.h"
#include "libvxMediaRTOSDB/src/records/request_header.h"
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

GroupMembers::GroupMembers(rtosConnection* connection, const ListItem& group)
    : mConnection(connection),
      mGroup(group),
      mNames(*group.record, groupNumber(*group.record, *group.group), MemberNameUse::kFiles,
             mChapters) {}

bool GroupMembers::next(MemberRecord* member) {
    do {
        if (readMember(member))
            return true;
    } while (ask());
    return false;
}

bool GroupMembers::readMember(MemberRecord* member) {
    while (mRecordsLeft > 0) {
        const auto* item = mReader.read<db_item_record>();
        const auto* video = item ? mReader.read<db_video_specific_info>() : nullptr;
        const auto highlights =
            video ? mReader.readArray<u32le>(video->highlight_count) : std::nullopt;
        mRecordsLeft = highlights ? mRecordsLeft - 1 : 0;
        if (!highlights || !settle(*item))
            continue;
        *member = {item, video, *highlights};
        return true;
    }
    return false;
}

// Members that come before this one and were not returned are settled too.
bool GroupMembers::settle(const db_item_record& item) {
    if (item.content_type == DB_CONTENT_TYPE_UNKNOWN_FILE) {
        mSettled = std::min(mSettled + 1, mAsked);
        return false;
    }
    for (size_t i = mSettled; i < mAsked; i++) {
        if (textOf(mRequest.files[i].file_name) == textOf(item.file_name)) {
            mSettled = i + 1;
            return true;
        }
    }
    return false;
}

bool GroupMembers::ask() {
    if (mStatus != HTTP_OK)
        return false;
    if (mAsked > 0 && mSettled == 0)
        return fail();
    nameMembers();
    if (mAsked == 0)
        return false;

    const size_t size = sizeof mRequest.header + mAsked * sizeof mRequest.files[0];
    fillHeader(&mRequest.header, DB_CMD_VIDEO_SPECIFIC_INFO, static_cast<uint32_t>(mAsked),
               &mRequest);
    logRequest(mRequest.header);
    const int received = rtosCall(mConnection, &mRequest, static_cast<int>(size), mResponse);
    if (!holdsResponseHeader(received)) {
        mStatus = discardResponse(received);
        return false;
    }
    auto* header = reinterpret_cast<db_response_header*>(mResponse);
    logResponse(*header);
    checkToken(header->token, mRequest.header);
    correctCount(mRequest.header, header, UTIL_LOG_WARN);
    const bool notFound = saysNotFound(header->status);
    if (header->status != 0 && !notFound) {
        UTIL_LOG(UTIL_LOG_ERROR, "error on IPC received, exiting, status %d\n",
                 uint32_t{header->status});
        return fail();
    }
    mReader = RecordReader({mResponse, static_cast<size_t>(received)}, sizeof *header);
    mRecordsLeft = notFound ? 0 : uint32_t{header->count_returned};
    mSettled = mRecordsLeft > 0 ? 0 : mAsked;
    return true;
}

void GroupMembers::nameMembers() {
    if (mAsked > 0)
        mNextIndex = mIndices[mSettled - 1] + 1;
    const db_group_info& group = *mGroup.group;
    mAsked = 0;
    for (uint32_t i = mNextIndex; i < numberCount(group) && mAsked < kMaxFilesInRequest; i++) {
        if (!isPresent(group, mGroup.memberMask, i))
            continue;
        db_file_name& file = mRequest.files[mAsked];
        fillField(file.dir_name, mGroup.record->dir_name);
        fillField(file.file_name, mNames.name(group.first_number + i).data());
        mIndices[mAsked++] = i;
    }
}

bool GroupMembers::fail() {
    mStatus = HTTP_INTERNAL_ERROR;
    return false;
}

#include "libvxMediaRTOSDB/src/http/list/group_members.h"

#include <algorithm>

#include "libvxMediaRTOSDB/src/exchange/db_checks.h"
#include "libvxMediaRTOSDB/src/files/status_query.h"
#include "libvxMediaRTOSDB/src/names/group_number.h"
#include "libvxMediaRTOSDB/src/records/db_log.h"
#include "libvxMediaRTOSDB/src/records/member_mask.h"
#include "libvxMediaRTOSDB/src/records/name_fields.h"
#include "libvxMediaRTOSDB/src/records/request_header.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

GroupMembers::GroupMembers(rtosConnection* connection, const ListItem& group)
    : mConnection(connection),
      mGroup(group),
      mNames(*group.record, groupNumber(*group.record, *group.group), MemberNameUse::kFiles,
             mChapters) {}

MemberAnswer GroupMembers::next(MemberRecord* member) {
    auto answer = MemberAnswer::kAnswered;
    while (answer == MemberAnswer::kAnswered && !readMember(member)) {
        answer = ask();
    }
    return answer;
}

bool GroupMembers::readMember(MemberRecord* member) {
    while (mRecordsLeft > 0) {
        const auto* item = mReader.read<db_item_record>();
        const auto* video = item ? mReader.read<db_video_specific_info>() : nullptr;
        const auto highlights =
            video ? mReader.readArray<u32le>(video->highlight_count) : std::nullopt;
        mRecordsLeft = highlights ? mRecordsLeft - 1 : 0;
        if (!highlights || !settle(*item)) {
            continue;
        }
        *member = {item, video, *highlights};
        return true;
    }
    return false;
}

// Members that come before this one and were not returned are settled too.
bool GroupMembers::settle(const db_item_record& item) {
    if (item.content_type == DB_CONTENT_TYPE_UNKNOWN_FILE) {
        settle(std::min<size_t>(1, mUnsettled.size()));
        return false;
    }
    for (size_t i = 0; i < mUnsettled.size(); ++i) {
        if (textOf(mUnsettled[i].file_name) == textOf(item.file_name)) {
            settle(i + 1);
            return true;
        }
    }
    return false;
}

// Settles the first ones of those that the request names.
void GroupMembers::settle(size_t count) {
    mUnsettled = mUnsettled.subspan(count);
    for (; count > 0; ++mFirst) {
        count -= isPresent(*mGroup.group, mGroup.memberMask, mFirst);
    }
}

MemberAnswer GroupMembers::ask() {
    const uint32_t askedBefore = mRequest.header.request_count;
    if (askedBefore > 0 && mUnsettled.size() == askedBefore) {
        UTIL_LOG(UTIL_LOG_ERROR, "no member of %.8s/%.12s in the response, exiting\n",
                 mGroup.record->dir_name, mGroup.record->file_name);
        return MemberAnswer::kFailed;
    }
    nameMembers();
    if (mUnsettled.empty()) {
        return MemberAnswer::kNothingLeft;
    }

    fillHeader(&mRequest.header, DB_CMD_VIDEO_SPECIFIC_INFO,
               static_cast<uint32_t>(mUnsettled.size()), &mRequest);
    logRequest(mRequest.header);
    const size_t size = sizeof mRequest.header + mUnsettled.size_bytes();
    const int received = rtosCall(mConnection, &mRequest, static_cast<int>(size), mResponse);
    if (!holdsResponseHeader(received)) {
        (void)discardResponse(received);
        return MemberAnswer::kFailed;
    }
    auto* header = reinterpret_cast<db_response_header*>(mResponse);
    logResponse(*header);
    checkToken(header->token, mRequest.header);
    correctCount(mRequest.header, header, UTIL_LOG_WARN);
    const bool notFound = saysNotFound(header->status);
    if (header->status != 0 && !notFound) {
        UTIL_LOG(UTIL_LOG_ERROR, "error on IPC received, exiting, status %d\n",
                 signedWord(header->status));
        return MemberAnswer::kFailed;
    }
    mReader = RecordReader({mResponse, static_cast<size_t>(received)}, sizeof *header);
    mRecordsLeft = notFound ? 0 : uint32_t{header->count_returned};
    if (mRecordsLeft == 0) {
        settle(mUnsettled.size());
    }
    return MemberAnswer::kAnswered;
}

void GroupMembers::nameMembers() {
    const db_group_info& group = *mGroup.group;
    size_t named = 0;
    for (uint32_t i = mFirst; i < numberCount(group) && named < kMaxFilesInRequest; ++i) {
        if (!isPresent(group, mGroup.memberMask, i)) {
            continue;
        }
        db_file_name& file = mRequest.files[named++];
        fillField(file.dir_name, mGroup.record->dir_name);
        fillField(file.file_name, mNames.name(group.first_number + i).data());
    }
    mUnsettled = {mRequest.files, named};
}

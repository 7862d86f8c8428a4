// The files that a video group is made of, as the database describes each of them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "libvxMediaRTOSDB/src/http/list/item_keys.h"
#include "libvxMediaRTOSDB/src/names/member_names.h"
#include "libvxMediaRTOSDB/src/records/item_reader.h"
#include "libvxMediaRTOSDB/src/records/record_reader.h"
#include <mediacheckd/vxMediaRTOSDB/db_requests.h>
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/rtos_connection.h>

// Asks for many members at once: a request names up to 74. The response settles those that come
// first, as many as fit; the next request starts behind them.
class GroupMembers {
  public:
    // group: an item with group information; must outlive the object, its response included.
    GroupMembers(rtosConnection* connection, const ListItem& group);

    // Finds the next member, in member order. One that the database does not return is left out.
    // member: valid until the next call. Returns false when there are no more.
    [[nodiscard]] bool next(MemberRecord* member);

    // HTTP_OK, or HTTP_INTERNAL_ERROR when next ended because members could not be fetched: the
    // exchange failed, or its response tells nothing of what was asked for.
    [[nodiscard]] int status() const { return mStatus; }

  private:
    // Reads the next member of the response. Returns false when it holds no more.
    [[nodiscard]] bool readMember(MemberRecord* member);
    [[nodiscard]] bool settle(const db_item_record& item);

    // Asks for the members from mNextIndex on. Returns false when there are none left or when the
    // database does not answer.
    [[nodiscard]] bool ask();
    void nameMembers();
    bool fail();

    rtosConnection* mConnection;
    const ListItem& mGroup;
    ChapterNumbers mChapters;
    MemberNames mNames;
    int mStatus = HTTP_OK;
    uint32_t mNextIndex = 0;  // where the next request starts, counted from first_number

    db_files_request mRequest = {};
    uint32_t mIndices[kMaxFilesInRequest] = {};  // of the members that the request names
    size_t mAsked = 0;
    size_t mSettled = 0;  // of those asked for, how many the response has dealt with

    uint8_t mResponse[kResponseBufferSize] = {};
    RecordReader mReader{{}};
    uint32_t mRecordsLeft = 0;
};

// The files that a video group is made of, as the database describes each of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "libvxMediaRTOSDB/src/http/list/item_keys.h"
#include "libvxMediaRTOSDB/src/names/member_names.h"
#include "libvxMediaRTOSDB/src/records/item_reader.h"
#include "libvxMediaRTOSDB/src/records/record_reader.h"
#include <mediacheckd/vxMediaRTOSDB/db_requests.h>
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/rtos_connection.h>

enum class MemberAnswer {
    kAnswered,
    kNothingLeft,
    kFailed,  // the exchange failed, or its response tells nothing of what was asked for; logged
};

// Asks for many members at once: a request names up to 74. The response settles those that come
// first, as many as fit; the next request starts behind them.
class GroupMembers {
  public:
    // group: an item with group information; must outlive the object, its response included.
    GroupMembers(rtosConnection* connection, const ListItem& group);

    // Finds the next member, in member order. One that the database does not return is left out.
    // member: set with kAnswered; valid until the next call. Nothing follows the other answers.
    [[nodiscard]] MemberAnswer next(MemberRecord* member);

  private:
    // Reads the next member of the response. Returns false when it holds no more.
    [[nodiscard]] bool readMember(MemberRecord* member);
    [[nodiscard]] bool settle(const db_item_record& item);
    void settle(size_t count);

    // Asks for the members that are not settled, as many as a request can name.
    [[nodiscard]] MemberAnswer ask();
    void nameMembers();

    rtosConnection* mConnection;
    const ListItem& mGroup;
    ChapterNumbers mChapters;
    MemberNames mNames;
    uint32_t mFirst = 0;  // of the members not settled, counted from first_number

    db_files_request mRequest = {};
    std::span<const db_file_name> mUnsettled;  // those that the request names

    uint8_t mResponse[kResponseBufferSize] = {};
    RecordReader mReader{{}};
    uint32_t mRecordsLeft = 0;
};

// The database library's queries against the sample card's database.
#include "simulator/answer.h"

#include <gmock/gmock.h>

#include "libvxMediaRTOSDB/src/directory_scan.h"
#include "libvxMediaRTOSDB/src/item_reader.h"
#include "libvxMediaRTOSDB/src/list_query.h"
#include "libvxMediaRTOSDB/src/member_mask.h"
#include "libvxMediaRTOSDB/src/name_fields.h"
#include "simulator/card.h"
#include "tests/simulator/sample_card.h"
#include "tests/support/channel_thread.h"

namespace {

using simulator::appendRecord;
using simulator::Message;
using simulator::Request;
using testing::ElementsAre;

constexpr uint32_t kMainList = 0xFFFFFB00;
constexpr uint32_t kSessionList = 0x2400;

class SimulatedDatabase : public testing::Test {
  protected:
    // Walks all pages; gives a line an entry.
    std::vector<std::string> list(uint32_t pageSize, uint32_t listOptions, uint32_t queryOptions) {
        std::vector<std::string> lines;
        for (;;) {
            uint8_t page[kResponseBufferSize];
            int received = 0;
            const auto start = static_cast<uint32_t>(lines.size());
            EXPECT_EQ(
                queryRTOSdb(pageSize, start, this, page, listOptions, queryOptions, &received), 0);
            db_list_response_header header{};
            std::memcpy(&header, page, sizeof(header));
            EXPECT_EQ(header.session_id, 7u);
            std::size_t offset = sizeof(header);
            for (uint32_t i = 0; i < header.header.count_returned; ++i) {
                ListItem item{};
                EXPECT_EQ(
                    readListItem(std::span(page).first(static_cast<std::size_t>(received)), offset,
                                 {listOptions, ITEM_ATTRIBUTE_PARENT_GUMI,
                                  (listOptions & LIST_OPTION_VIDEO_GROUPING) != 0},
                                 &item),
                    ItemStatus::kOk);
                offset = item.nextOffset;
                lines.push_back(describe(item));
            }
            EXPECT_EQ(offset, static_cast<std::size_t>(received)) << "nothing but whole entries";
            if (header.header.count_returned == 0) {
                EXPECT_EQ(header.total_entries, lines.size());
                return lines;
            }
        }
    }

    static std::string describe(const ListItem& item) {
        std::ostringstream line;
        line << terminated(item.record->file_name).data();
        if (item.gumi != nullptr) {
            line << " gumi " << int{item.gumi->bytes[15]};
        }
        if (item.parentGumi != nullptr) {
            line << " of " << int{item.parentGumi->bytes[15]};
        }
        if (item.moreInfo != nullptr) {
            line << " width " << item.moreInfo->width;
        }
        if (item.videoInfo != nullptr) {
            line << " ms " << item.videoInfo->duration_ms;
        }
        for (const u32le& highlight : item.highlights) {
            line << " hi " << highlight;
        }
        if (item.group != nullptr) {
            line << " group " << item.group->group_number << " without";
            forEachUnmarked(*item.group, item.memberMask, item.group->num_missing,
                            [&](uint32_t number) { line << ' ' << number; });
            line << " of " << numberCount(*item.group);
        }
        if (!item.highlightMask.empty()) {
            forEachUnmarked(*item.group, item.highlightMask, item.record->highlight_count,
                            [&](uint32_t number) { line << " hi " << number; });
        }
        return line.str();
    }

    simulator::Database mDatabase = simulator::loadCard(sampleCard());
    ChannelThread mServer{"rtos_media_db", [this](Request request) {
                              return host::Reply{.messages = answer(mDatabase, request)};
                          }};
};

TEST_F(SimulatedDatabase, listsByKindPageByPage) {
    const auto photosAndVideos = ElementsAre(
        "VXMF0008.JPG gumi 0 width 0", "VPAB0061.JPG gumi 0 width 0 group 1002 without of 15",
        "VPAB0031.JPG gumi 0 width 0 group 1002 without of 30",
        "VXMF0006.MP4 gumi 0 width 0 ms 24000", "VXMF0005.MP4 gumi 5 of 3 width 0 ms 9000",
        "VXMF0004.MP4 gumi 4 width 5312 group 4 without of 3",
        "VXMF0003.MP4 gumi 3 width 3840 ms 62400 hi 1500 hi 30250",
        "VXMF0002.JPG gumi 2 width 5568", "VXMF0001.JPG gumi 1 width 5568",
        "VPAB0001.JPG gumi 6 width 0 group 1002 without of 30",
        "VHAA0001.MP4 gumi 0 width 0 group 1001 without of 3",
        "V0010001.JPG gumi 0 width 0 group 1 without 4 of 12 hi 2 hi 7");
    for (const uint32_t pageSize : {1u, 2u, 15u, 1000u}) {
        EXPECT_THAT(list(pageSize, 0xF, kMainList), photosAndVideos) << pageSize;
    }
    EXPECT_THAT(list(15, 0, kSessionList), ElementsAre("VXMF0007.MP4 ms 4000"));
    EXPECT_THAT(list(15, 0, QUERY_OPTION_RAW), ElementsAre("VXMF0002.JPG"));
    EXPECT_THAT(list(5, 0, QUERY_OPTION_VIDEO),
                testing::AllOf(testing::SizeIs(9),
                               testing::Contains("VX020004.MP4 ms 527000 hi 400 hi 500000")));
    EXPECT_EQ(list(15, 2, 0).size(), 13u);
    EXPECT_EQ(list(15, 2, 0xF00).size(), 13u);
    EXPECT_EQ(list(15, 2, QUERY_OPTION_PHOTO).size(), 7u);

    mDatabase = simulator::loadCard(makeCard(
        {"100VXCAM/VPAA0001.JPG", "100VXCAM/VPAA4096.JPG"},
        R"({"session_id": 7, "files": {"100VXCAM/VPAA0001.JPG": {"highlights": [4096]}}})"));
    EXPECT_EQ(list(15, 0xF, 0).size(), 1u) << "the largest item fits";
}

TEST_F(SimulatedDatabase, scansDirectoriesInSeveralMessages) {
    std::vector<simulator::CardFile> files;
    for (int i = 1000; i < 1200; ++i) {
        files.push_back({"FILE" + std::to_string(i) + ".TXT", 7, 8});
    }
    mDatabase = simulator::Database({}, {{"100VXCAM", files}, {"101VXCAM", {}}});
    std::vector<db_scandir_entry> entries(300);
    for (const auto& [directory, wanted, result] :
         {std::tuple{"100VXCAM", 200u, 0}, {"101VXCAM", 0u, -5}, {"102VXCAM", 0u, -7}}) {
        auto count = static_cast<uint32_t>(entries.size());
        EXPECT_EQ(dbScanDirectory(directory, entries.data(), &count, nullptr), result);
        EXPECT_EQ(count, wanted);
    }
    EXPECT_STREQ(entries[199].file_name, "FILE1199.TXT");
}

db_request_header header(uint32_t command, uint32_t count = 1) {
    db_request_header request{};
    request.command_type = command;
    request.request_count = count;
    return request;
}

TEST_F(SimulatedDatabase, answersRequestsThatTheLibraryNeverSends) {
    for (uint32_t command = 0; command < 14; ++command) {
        const bool known = command != 1 && command != 5 && command != 13;
        Message whole;
        appendRecord(whole, header(command));
        whole.resize(40);
        int sound = 0;
        for (int length = 4; length <= 40; ++length) {
            const Message request(whole.begin(), whole.begin() + length);
            db_response_header reply{};
            std::memcpy(&reply, answer(mDatabase, request).at(0).data(), sizeof(reply));
            EXPECT_EQ(reply.command_type, command);
            EXPECT_EQ(reply.status == simulator::DB_STATUS_UNKNOWN_COMMAND, !known);
            sound += reply.status == simulator::DB_STATUS_OK ||
                     reply.status == simulator::DB_STATUS_NOT_FOUND;
        }
        EXPECT_EQ(sound, known ? 1 : 0) << command << " has one length";
    }
    EXPECT_EQ(answer(mDatabase, {}).at(0).size(), sizeof(db_response_header));
}

TEST_F(SimulatedDatabase, givesAsManyVideosAtOnceAsFit) {
    Message request;
    appendRecord(request, header(DB_CMD_VIDEO_SPECIFIC_INFO, 31));
    for (int i = 0; i < 31; ++i) {
        db_file_name name{};
        fillField(name.dir_name, "100VXCAM");
        fillField(name.file_name, i % 2 == 0 ? "VX020004.MP4" : "VX990004.MP4");
        appendRecord(request, name);
    }
    const Message reply = answer(mDatabase, request).at(0);
    EXPECT_EQ(reply[8], std::byte{13}) << "of the 16 that it has";
    EXPECT_EQ(reply.size(), 20u + 13 * (76 + 24 + 8));
}

TEST_F(SimulatedDatabase, listsWhatWasCreatedInARangeOfTimes) {
    const uint32_t start = 1717149600;
    for (const auto& [first, last, wanted] : {std::tuple{0u, 0u, 13},
                                              {start, start, 1},
                                              {start + 60, start + 120, 2},
                                              {start + 60, 0u, 12},
                                              {start + 1, start + 59, 0}}) {
        db_list_with_parameters_request request{};
        request.list.header = header(DB_CMD_LIST_WITH_PARAMETERS);
        request.list.list_options = LIST_OPTION_VIDEO_GROUPING;
        request.param1 = first;
        request.param2 = last;
        const auto replies = answer(mDatabase, std::as_bytes(std::span(&request, 1)));
        EXPECT_EQ(replies.at(0).at(32), static_cast<std::byte>(wanted)) << first;
    }
}

}  // namespace

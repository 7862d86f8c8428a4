// What the simulator answers to requests that the tools do not send, and where replies are full.
#include "simulator/answers/answer.h"

#include <gtest/gtest.h>

#include "libvxMediaRTOSDB/src/records/name_fields.h"
#include "simulator/card/card.h"
#include "tests/simulator/sample_card.h"
#include "tests/support/channel_thread.h"
#include <mediacheckd/vxMediaRTOSDB/directory_scan.h>

namespace {

using simulator::appendRecord;
using simulator::Message;
using simulator::Request;

class SimulatedDatabase : public testing::Test {
  protected:
    simulator::Database mDatabase = simulator::loadCard(sampleCard());
    ChannelThread mServer{"rtos_media_db", [this](Request request) {
                              return host::Reply{.messages = answer(mDatabase, request)};
                          }};
};

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

TEST_F(SimulatedDatabase, listsTheLargestItem) {
    mDatabase = simulator::loadCard(
        makeCard({"100VXCAM/VPAA0001.JPG", "100VXCAM/VPAA4096.JPG"},
                 R"({"files": {"100VXCAM/VPAA0001.JPG": {"highlights": [4096]}}})"));
    db_list_request request{};
    request.header = header(DB_CMD_LIST, 15);
    request.list_options = 0xF;
    const Message reply = answer(mDatabase, std::as_bytes(std::span(&request, 1))).at(0);
    EXPECT_EQ(reply[8], std::byte{1});
    EXPECT_EQ(reply.size(), 40u + 76 + 16 + 28 + 24 + 2 * 4096 / 8);
}

}  // namespace

#include "simulator/answer.h"

#include <gmock/gmock.h>

#include "libvxMediaRTOSDB/src/member_mask.h"
#include "libvxMediaRTOSDB/src/record_reader.h"
#include "simulator/card.h"
#include "tests/simulator/sample_card.h"

namespace {

using simulator::Message;
using testing::ElementsAre;

constexpr uint32_t kMainList = 0xFFFFFB00;
constexpr uint32_t kSessionList = 0x2400;

template <typename Record>
RecordReader ask(simulator::Database& database, const Record& request, Message& reply) {
    auto replies = answer(database, std::as_bytes(std::span(&request, 1)));
    EXPECT_EQ(replies.size(), 1u);
    reply = replies.at(0);
    EXPECT_LE(reply.size(), kResponseBufferSize);
    return RecordReader({reinterpret_cast<const uint8_t*>(reply.data()), reply.size()});
}

db_request_header header(uint32_t command, uint32_t count = 1) {
    db_request_header request{};
    request.command_type = command;
    request.request_count = count;
    request.token = 0xC0FFEE;
    return request;
}

db_list_request listRequest(uint32_t count, uint32_t start, uint32_t list, uint32_t query) {
    db_list_request request{};
    request.header = header(DB_CMD_LIST, count);
    request.starting_index = start;
    request.list_options = list;
    request.query_options = query;
    return request;
}

class SimulatedDatabase : public testing::Test {
  protected:
    // Walks all pages; gives a line an entry: name and, for a group, its members and highlights.
    std::vector<std::string> list(uint32_t pageSize, uint32_t options, uint32_t query) {
        std::vector<std::string> lines;
        for (uint32_t start = 0;;) {
            auto reader = ask(mDatabase, listRequest(pageSize, start, options, query), mReply);
            const auto* page = reader.read<db_list_response_header>();
            EXPECT_EQ(page->start_index, start);
            EXPECT_EQ(page->session_id, 7u);
            EXPECT_EQ(page->header.token, 0xC0FFEEu);
            for (uint32_t i = 0; i < page->header.count_returned; ++i) {
                lines.push_back(readEntry(reader, options));
            }
            EXPECT_EQ(reader.offset(), mReply.size()) << "nothing but whole entries";
            start += page->header.count_returned;
            if (page->header.count_returned == 0) {
                EXPECT_EQ(page->total_entries, lines.size());
                return lines;
            }
        }
    }

    static std::string readEntry(RecordReader& reader, uint32_t options) {
        const auto& item = *reader.read<db_item_record>();
        std::string line(item.file_name, kFileNameSize);
        if ((options & LIST_OPTION_INCLUDE_GUMI) != 0) {
            line += " " + std::to_string(reader.read<db_gumi>()->bytes[15]);
            if ((item.attributes & ITEM_ATTRIBUTE_PARENT_GUMI) != 0) {
                line += "<" + std::to_string(reader.read<db_gumi>()->bytes[15]);
            }
        }
        if ((options & LIST_OPTION_INCLUDE_MORE_INFO) != 0) {
            line += " w" + std::to_string(reader.read<db_more_info>()->width);
        }
        const bool grouped = (options & LIST_OPTION_VIDEO_GROUPING) != 0;
        if (isPhotoGroup(item.content_type) || (isVideoGroup(item.content_type) && grouped)) {
            readGroup(reader, item, line);
        } else if (isVideo(item.content_type)) {
            const auto& video = *reader.read<db_video_specific_info>();
            line += " " + std::to_string(video.duration_ms) + "ms";
            const auto highlights = reader.readArray<u32le>(video.highlight_count);
            for (const u32le& highlight : *highlights) {
                line += " h" + std::to_string(highlight);
            }
        }
        return line;
    }

    static void readGroup(RecordReader& reader, const db_item_record& item, std::string& line) {
        const auto& group = *reader.read<db_group_info>();
        line += " g" + std::to_string(group.group_number) + ":";
        const auto add = [&line](uint32_t number) { line += " " + std::to_string(number); };
        std::span<const uint8_t> mask;
        if (group.num_missing != 0) {
            mask = *reader.readArray<uint8_t>(maskSize(group));
        }
        uint32_t members = 0;
        forEachMember(group, mask, [&](uint32_t) { ++members; });
        EXPECT_EQ(members, numberCount(group) - group.num_missing);
        if (members < 12) {
            forEachMember(group, mask, add);
        }
        if (isPhotoGroup(item.content_type) && item.highlight_count != 0) {
            line += " h";
            forEachUnmarked(group, *reader.readArray<uint8_t>(maskSize(group)), 99, add);
        }
    }

    simulator::Database mDatabase = simulator::loadCard(sampleCard());
    Message mReply;
};

TEST_F(SimulatedDatabase, listsByKindPageByPage) {
    const std::vector<std::string> grouped = {
        "V0010001.JPG g1: 1 2 3 5 6 7 8 9 10 11 12 h 2 7",
        "VHAA0001.MP4 g1001: 1 2 3",
        "VPAB0001.JPG g1002:",
        "VXMF0001.JPG",
        "VXMF0002.JPG",
        "VXMF0003.MP4 62400ms h1500 h30250",
        "VXMF0004.MP4 g4: 0 1 2",
        "VXMF0005.MP4 9000ms",
        "VXMF0006.MP4 24000ms",
        "VPAB0031.JPG g1002:",
        "VPAB0061.JPG g1002:",
        "VXMF0008.JPG",
    };
    for (const uint32_t pageSize : {1u, 2u, 15u, 1000u}) {
        EXPECT_EQ(list(pageSize, LIST_OPTION_VIDEO_GROUPING, kMainList), grouped) << pageSize;
    }
    EXPECT_THAT(list(15, 0, kSessionList), ElementsAre("VXMF0007.MP4 4000ms"));
    EXPECT_THAT(list(15, 0, QUERY_OPTION_RAW), ElementsAre("VXMF0002.JPG"));
    EXPECT_THAT(
        list(5, LIST_OPTION_SORT_ORDER | LIST_OPTION_INCLUDE_GUMI | LIST_OPTION_INCLUDE_MORE_INFO,
             QUERY_OPTION_VIDEO),
        ElementsAre("VXMF0006.MP4 0 w0 24000ms", "VXMF0005.MP4 5<3 w0 9000ms",
                    "VX030004.MP4 0 w0 161500ms", "VX020004.MP4 0 w0 527000ms h400 h500000",
                    "VXMF0004.MP4 4 w5312 527000ms h12000",
                    "VXMF0003.MP4 3 w3840 62400ms h1500 h30250", "VHAA0003.MP4 0 w0 40250ms h2000",
                    "VHAA0002.MP4 0 w0 38500ms", "VHAA0001.MP4 0 w0 41000ms"));
    const auto count = [this](uint32_t query) { return list(15, 2, query).size(); };
    EXPECT_EQ(count(0), 13u);
    EXPECT_EQ(count(0xF00), 13u);
    EXPECT_EQ(count(QUERY_OPTION_PHOTO), 7u);
    EXPECT_EQ(count(QUERY_OPTION_VIDEO), 5u);
}

TEST_F(SimulatedDatabase, endsPagesBeforeTheBufferDoes) {
    for (const auto& [count, start] : {std::pair{0u, 0u}, {5u, 13u}, {5u, 0xFFFFFFFFu}}) {
        ask(mDatabase, listRequest(count, start, 2, 0), mReply);
        EXPECT_EQ(mReply.size(), sizeof(db_list_response_header));
    }
    const auto card = makeCard({"100VXCAM/VPAA0001.JPG", "100VXCAM/VPAA4096.JPG"},
                               R"({"session_id": 7,
                                   "files": {"100VXCAM/VPAA0001.JPG": {"highlights": [1, 4096]}}})");
    mDatabase = simulator::loadCard(card);
    EXPECT_THAT(list(15, 0xF, 0), ElementsAre("VPAA0001.JPG 0 w0 g1001: 1 4096 h 1 4096"))
        << "the largest item fits";
}

TEST_F(SimulatedDatabase, countsInTheHistogramWhatIsNotUploaded) {
    const auto histogram = [this] {
        auto reader = ask(mDatabase, db_histogram_request{header(DB_CMD_MEDIA_HISTOGRAM)}, mReply);
        const auto* response = reader.read<db_histogram_response>();
        return std::vector<uint32_t>(std::begin(response->buckets), response->buckets + 13);
    };
    const auto write = [this](std::string_view file, uint32_t status) {
        db_upload_status_request request{};
        request.header = header(DB_CMD_WRITE_UPLOAD_STATUS);
        std::string_view("100VXCAM").copy(request.file.dir_name, kDirNameSize);
        file.copy(request.file.file_name, kFileNameSize);
        request.upload_status = status;
        return uint32_t{ask(mDatabase, request, mReply).read<db_response_header>()->status};
    };
    EXPECT_THAT(histogram(), ElementsAre(2, 1, 1, 0, 2, 1, 3, 0, 0, 1, 0, 0, 1));
    EXPECT_EQ(write("VXMF0003.MP4", 2), simulator::DB_STATUS_OK);
    EXPECT_EQ(mReply.size(), sizeof(db_response_header));
    EXPECT_EQ(write("VXMF0006.MP4", 0), simulator::DB_STATUS_OK);
    EXPECT_EQ(write("VX020004.MP4", 1), simulator::DB_STATUS_OK) << "a member, not the item";
    EXPECT_EQ(write("VXMF0099.MP4", 1), simulator::DB_STATUS_NOT_FOUND);
    EXPECT_THAT(histogram(), ElementsAre(1, 1, 1, 1, 2, 1, 3, 0, 0, 1, 0, 0, 1));
}

TEST_F(SimulatedDatabase, answersWhatIsNoRequestWithAStatus) {
    for (const uint32_t command : {0u, 1u, 5u, 9u, 10u, 13u, 0xFFFFFFFFu}) {
        const bool known = simulator::commandName(command) != "unknown command";
        Message whole;
        simulator::appendRecord(whole, header(command));
        whole.resize(40);
        for (int length = 0; length <= 40; ++length) {
            const Message request(whole.begin(), whole.begin() + length);
            const auto replies = answer(mDatabase, request);
            ASSERT_EQ(replies.size(), 1u);
            ASSERT_GE(replies[0].size(), sizeof(db_response_header));
            db_response_header reply{};
            std::memcpy(&reply, replies[0].data(), sizeof(reply));
            EXPECT_EQ(reply.token, length < 12 ? reply.token : 0xC0FFEEu);
            if (reply.status == simulator::DB_STATUS_UNKNOWN_COMMAND) {
                EXPECT_TRUE(!known || length < 4) << command << ' ' << length;
            } else if (reply.status != simulator::DB_STATUS_BAD_REQUEST) {
                EXPECT_TRUE(length == 12 || length == 24 || length == 36) << length;
            }
        }
    }
}

}  // namespace

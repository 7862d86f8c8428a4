// Every query of the client against every reply that is cut short or wrong in one word. What the
// table's functions expect holds for any reply.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "libvxMediaRTOSDB/src/list_query.h"
#include "libvxMediaRTOSDB/src/member_mask.h"
#include "libvxMediaRTOSDB/src/page_walker.h"
#include "libvxMediaRTOSDB/src/zep_queries.h"
#include "tests/vxmediartosdb/reply_sweep.h"

namespace {

using namespace scripted;
using testing::AnyOf;

struct Delivered {
    int items = 0;
    int files = 0;
    uint32_t sum = 0;  // of everything that was read
};

void takeItem(void* ctx, zep_item_s* item) {
    auto* delivered = static_cast<Delivered*>(ctx);
    delivered->items++;
    delivered->sum +=
        static_cast<uint32_t>(std::strlen(item->dir_name) + std::strlen(item->file_name));
    for (const char* gumi : {item->gumi, item->parent_gumi})
        EXPECT_TRUE(!gumi || std::strlen(gumi) == 32);
    const uint64_t maskBytes = (uint64_t{item->last_number - item->first_number} / 32 + 1) * 4;
    for (uint64_t i = 0; item->member_mask && i < maskBytes; i++)
        delivered->sum += item->member_mask[i];
}

void takeFile(void* ctx, char* dirName, char* fileName) {
    auto* delivered = static_cast<Delivered*>(ctx);
    delivered->files++;
    delivered->sum += static_cast<uint32_t>(std::strlen(dirName) + std::strlen(fileName));
}

Bytes pageReply() {
    const Bytes gumi(16, 0xA5);
    const Bytes moreInfo = words({1920, 1080, 30, 1, 1, 0, 0});
    return join({
        listHeader(4, LIST_OPTION_VIDEO_GROUPING | LIST_OPTION_INCLUDE_GUMI |
                          LIST_OPTION_INCLUDE_MORE_INFO),
        itemRecord(DB_CONTENT_TYPE_SINGLE_VIDEO, "VXMF0012.MP4", 2, ITEM_ATTRIBUTE_TR),
        gumi,
        gumi,
        moreInfo,
        videoInfo(1500, 2),
        words({10, 20}),
        itemRecord(DB_CONTENT_TYPE_CHAPTERED_VIDEO, "VXMF0013.MP4"),
        gumi,
        moreInfo,
        groupInfo(13, 0, 3, 1),
        words({0xB0}),
        itemRecord(DB_CONTENT_TYPE_BURST, "V0010001.JPG", 1),
        gumi,
        moreInfo,
        groupInfo(1, 1, 33, 2),
        words({0xFFFFFFF3, 0x80}),
        words({0xFFFFFFFF, 0}),
        itemRecord(DB_CONTENT_TYPE_SINGLE_PHOTO, "VXMF0001.JPG"),
        gumi,
        moreInfo,
    });
}

void askListQuery(const Bytes& reply) {
    uint8_t response[1500];
    int bytesRead = 0;
    EXPECT_EQ(queryRTOSdb(4, 0, nullptr, response, 2, 0, &bytesRead), reply.size() < 20 ? -3 : 0);
    EXPECT_EQ(bytesRead, static_cast<int>(reply.size()));
    const Bytes received(response, response + sizeof response);
    for (size_t offset = 0; offset < sizeof response; offset += 4) {
        uint32_t expected = wordOf(reply, offset);
        if (offset == 8 && reply.size() >= 20)
            expected = std::min(expected, 4u);
        if (offset != kToken) {
            ASSERT_EQ(wordAt(received, offset), expected) << offset;
        }
    }
}

template <auto fetch>
void askPage(const Bytes& reply) {
    Delivered delivered;
    uint32_t session = kUntouched;
    uint32_t total = kUntouched;
    const int result =
        fetch(4, 0, nullptr, takeItem, &delivered, takeFile, &delivered, &session, &total);
    if (reply.size() < 20) {
        EXPECT_EQ(result, -3);
        EXPECT_EQ(session, kUntouched);
        return;
    }
    EXPECT_EQ(session, wordOf(reply, 36));
    EXPECT_EQ(total, wordOf(reply, 32));
    const int returned = static_cast<int>(std::min(wordOf(reply, 8), 4u));
    EXPECT_THAT(result, AnyOf(-1, delivered.items, returned));
    EXPECT_LE(delivered.items, returned);
}

// The reply is a heap block of its exact size.
void askWalker(const Bytes& reply) {
    Delivered delivered;
    const int result = processQueryResponse(reply.data(), static_cast<int>(reply.size()), 0,
                                            takeItem, &delivered, takeFile, &delivered);
    EXPECT_THAT(result, AnyOf(-1, 0, delivered.items));
    EXPECT_LE(delivered.files, 4 * static_cast<int>(kMaxGroupSpan));
}

void askUploadStatus(const Bytes& reply) {
    EXPECT_EQ(dbSetZEPUploadStatus("100VMEDI", "VXMF0012.MP4", 5, nullptr), 0);
    EXPECT_EQ(platform.pauses.size(), reply.size() < 20 || wordAt(reply, 4) != 0 ? 1u : 0u);
}

void askHistogram(const Bytes& reply) {
    uint32_t counts[32];
    std::fill(std::begin(counts), std::end(counts), kUntouched);
    EXPECT_EQ(dbGetMediaHistogram(nullptr, nullptr, counts), 0);
    for (size_t i = 0; i < 32; i++)
        ASSERT_EQ(counts[i], reply.size() < 20 ? kUntouched : wordOf(reply, 20 + 4 * i)) << i;
}

const Query kQueries[] = {
    {"list query", pageReply(), {}, askListQuery},
    {"items", pageReply(), {}, askPage<dbGetZEPItems>},
    {"session files", pageReply(), {}, askPage<dbGetZEPSessionFileList>},
    {"walker", pageReply(), {}, askWalker},
    {"upload status", responseHeader(DB_CMD_WRITE_UPLOAD_STATUS, 1), {}, askUploadStatus},
    {"histogram",
     join({responseHeader(DB_CMD_MEDIA_HISTOGRAM, 32), Bytes(128, 7)}),
     {},
     askHistogram},
};

// Asks once. The first request gets the reply; further ones, for the durations of grouped videos,
// get an empty one.
void askOnce(const Query& query, const Bytes& reply, bool rightToken) {
    reset();
    platform.answer = [&](const Bytes& request) -> Exchange {
        if (platform.requests.size() > 1)
            return scripted::reply({});
        Exchange exchange = scripted::reply(reply);
        if (rightToken && reply.size() >= kToken + 4)
            putWord(exchange.replies.front(), kToken, wordAt(request, 8));
        if (!query.nextReply.empty())
            exchange.replies.push_back(query.nextReply);
        return exchange;
    };
    query.ask(reply);
    EXPECT_EQ(platform.opened, platform.closed);
    EXPECT_LE(platform.requests.size(), 1 + 2 * size_t{kMaxGroupSpan});
}

TEST_P(ReplySweep, EveryLength) {
    const Query& query = GetParam();
    for (size_t length = 0; length <= query.reply.size(); length++) {
        SCOPED_TRACE(length);
        askOnce(query, {query.reply.begin(), query.reply.begin() + static_cast<long>(length)},
                true);
    }
}

TEST_P(ReplySweep, EveryWord) {
    const Query& query = GetParam();
    for (size_t offset = 0; offset + 4 <= query.reply.size(); offset += 4) {
        const uint32_t right = wordAt(query.reply, offset);
        for (uint32_t value :
             {0u, 1u, right - 1, right + 1, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
            SCOPED_TRACE(testing::Message() << "offset " << offset << " value " << value);
            Bytes reply = query.reply;
            putWord(reply, offset, value);
            askOnce(query, reply, offset != kToken);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(UploadQueries, ReplySweep, testing::ValuesIn(kQueries), queryName);

}  // namespace

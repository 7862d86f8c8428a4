// The page fetches with their walker, the upload status and the histogram.
#include <gmock/gmock.h>

#include <numeric>

#include "tests/vxmediartosdb/reply_sweep.h"
#include <mediacheckd/platform/debug_level.h>
#include <mediacheckd/vxMediaRTOSDB/page_walker.h>
#include <mediacheckd/vxMediaRTOSDB/zep_queries.h>

namespace {

using namespace scripted;
using Lines = std::vector<std::string>;

void* const kAddress = reinterpret_cast<void*>(0x123);

// What a walk or a page fetch delivers.
struct Delivered {
    Lines items, files;
    std::string directory;  // of the last file
    uint32_t session = kUntouched, total = kUntouched;
    int result = 0;
};

void takeItem(void* ctx, zep_item_s* item) {
    EXPECT_LE(strlen(item->dir_name) + strlen(item->file_name), 20u);
    const uint32_t maskWords = (item->last_number - item->first_number) / 32 + 1;
    const uint8_t* mask = item->member_mask;
    const auto maskSum = mask ? std::accumulate(mask, mask + 4 * size_t{maskWords}, 0u) : 0;
    char line[200];
    std::snprintf(line, sizeof line, "%u g%u %u-%u m%x h%u d%u c%u s%x %.3s %.3s p%u",
                  item->content_type, item->group_number, item->first_number, item->last_number,
                  maskSum, item->highlight, item->duration_s, item->clip,
                  static_cast<uint32_t>(item->size_bytes >> 32), item->gumi ? item->gumi : "-",
                  item->parent_gumi ? item->parent_gumi : "-",
                  item->upload_status + item->score + item->timestamp);
    static_cast<Delivered*>(ctx)->items.emplace_back(line);
}

void takeFile(void* ctx, char* dirName, char* fileName) {
    static_cast<Delivered*>(ctx)->files.emplace_back(fileName);
    static_cast<Delivered*>(ctx)->directory = dirName;
}

Delivered walk(const Bytes& page, uint32_t startingIndex = 0) {
    Delivered delivered;
    delivered.result =
        processQueryResponse(page.data(), static_cast<int>(page.size()), startingIndex, takeItem,
                             &delivered, takeFile, &delivered);
    return delivered;
}

Delivered fetch(decltype(dbGetZEPItems)* query) {
    Delivered delivered;
    delivered.result = query(4, 0, kAddress, takeItem, &delivered, takeFile, &delivered,
                             &delivered.session, &delivered.total);
    return delivered;
}

using UploadQueries = QueryTest;

const Bytes kGumi(16, 0xAB);
const Bytes kParent(16, 0x12);
const Bytes kPhoto = itemRecord(4, "VXAA0001.JPG");
const Bytes kBurst = itemRecord(5, "V0010001.JPG");
const Bytes kHighlighted = itemRecord(5, "V0010001.JPG", 1);

TEST_F(UploadQueries, WalkEveryKindOfItem) {
    // Every member lasts 700 ms.
    const Bytes member =
        join({responseHeader(4, 1), itemRecord(0, "VXMF0012.MP4"), videoInfo(700)});
    platform.answer = [&](const Bytes&) { return reply(member); };
    const auto check = [](uint32_t options, const Bytes& item, const char* expected, Lines files) {
        const Bytes page = join({listHeader(2, options), item, kPhoto, Bytes(44)});
        g_logLevel = UTIL_LOG_DEBUG;
        platform.logs.clear();
        const Delivered delivered = walk(page);
        EXPECT_EQ(platform.logged("missing:"), strstr(expected, " m0 ") == nullptr);
        EXPECT_EQ(delivered.result, 0);
        EXPECT_EQ(delivered.items.at(0), std::string(expected) + " p1104");
        files.emplace_back("VXAA0001.JPG");
        EXPECT_EQ(delivered.files, files);
        EXPECT_EQ(delivered.directory, "100VMEDI");
        const int size = static_cast<int>(page.size());
        EXPECT_EQ(processQueryResponse(page.data(), size, 0, nullptr, nullptr, nullptr, nullptr),
                  0);
    };
    const Bytes gumis = join({kGumi, kParent});
    const auto video = itemRecord(0, "VXMF0012.MP4", 2);
    check(2, join({video, videoInfo(1500, 2, 8), Bytes(8)}), "0 g0 0-0 m0 h2 d2 c1 s1 - -",
          {"VXMF0012.MP4"});
    check(2, join({itemRecord(12, "VXMF0012.MP4"), videoInfo(~0u)}),
          "12 g0 0-0 m0 h0 d4294967 c0 s1 - -", {"VXMF0012.MP4"});
    check(2, itemRecord(11, "ANYTHING.BIN"), "11 g0 0-0 m0 h0 d0 c0 s1 - -", {"ANYTHING.BIN"});
    check(2, join({itemRecord(1, "VHAA0003.MP4"), groupInfo(1001, 3, 5)}),
          "1 g1001 3-5 m0 h0 d2 c0 s2 - -", {"VHAA0003.MP4", "VHAA0004.MP4", "VHAA0005.MP4"});
    check(2, join({itemRecord(2, "VH010012.360"), groupInfo(12, 0, 3, 2), words({0xA0})}),
          "2 g12 0-3 ma0 h0 d1 c0 s2 - -", {"VH010012.360", "VH030012.360"});
    EXPECT_EQ(Bytes(platform.requests.back().begin() + 12, platform.requests.back().end()),
              text("100VMEDIVH030012.MP4"));  // durations are never asked for a 360 file
    check(2, join({kHighlighted, groupInfo(1, 1, 33, 31), words({1, 0x80}), Bytes(8)}),
          "5 g1 1-33 m81 h1 d0 c0 s2 - -", {"V0010008.JPG", "V0010033.JPG"});
    check(2, join({kHighlighted, groupInfo(1, 1, 2), Bytes(4)}), "5 g1 1-2 m0 h1 d0 c0 s2 - -",
          {"V0010001.JPG", "V0010002.JPG"});
    check(2, join({kBurst, groupInfo(1, 2, 1)}), "5 g1 2-1 m0 h0 d0 c0 s2 - -", {});
    check(12, join({itemRecord(9, "VXAA0001.JPG", 0, 1), gumis, Bytes(28, 9)}),
          "9 g0 0-0 m0 h0 d0 c0 s1 ABA 121", {"VXAA0001.JPG"});
    check(4, join({itemRecord(7, "VXAA0001.JPG", 0, 1u << 10), gumis}),
          "7 g0 0-0 m0 h0 d0 c0 s1 ABA 121", {"VXAA0001.JPG"});
}

TEST_F(UploadQueries, EndTheWalkWhereThePageEnds) {
    const Bytes video = join({itemRecord(3, "VXMF0012.MP4"), videoInfo(1, 2), Bytes(8)});
    const Bytes page = join({listHeader(4), video, video, video, video});
    g_debug_level = 16;
    for (size_t length = 0; length <= page.size(); ++length) {
        platform.logs.clear();
        const size_t whole = length < 40 ? 0 : (length - 40) / video.size();
        const Delivered delivered = walk(cut(page, length));
        EXPECT_EQ(delivered.result, whole % 4);
        EXPECT_EQ(delivered.items.size(), whole);
        EXPECT_EQ(platform.logged("[processQueryResponse:"), 36 <= length && length < page.size());
    }
    const auto check = [&](uint32_t returned, uint32_t total, uint32_t start, size_t items) {
        EXPECT_EQ(walk(with(with(page, 8, returned), 32, total), start).items.size(), items);
    };
    check(15, 3, 0, 3);
    check(4, 10, 7, 3);
    check(4, 10, 10, 0);
    check(4, 10, 11, 4);
    check(1u << 31, ~0u, 0, 0);
}

TEST_F(UploadQueries, RejectPagesThatMakeNoSense) {
    const auto check = [](const Bytes& items, int result, size_t files, const char* log) {
        platform.logs.clear();
        const Delivered delivered = walk(join({listHeader(2), items}));
        EXPECT_EQ(delivered.result, result);
        EXPECT_EQ(delivered.files.size(), files);
        EXPECT_EQ(platform.logged(log), *log != 0) << log;
    };
    const char* const insane = "Mask size failed sanity check. Size=1364";
    check(itemRecord(13, "VXAA0001.JPG"), -1, 0, "Invalid content type: 13\n");
    check(join({kPhoto, Bytes(76, 0xFF)}), -1, 1, "Invalid content type: -1\n");
    // The mask starts at byte 140 and may take what is left of 1500.
    check(join({kBurst, groupInfo(1, 1, 10881, 1)}), -1, 0, insane);
    check(join({kBurst, groupInfo(1, 1, 10880, 1)}), 0, 0, "");
    check(join({kHighlighted, groupInfo(1, 1, 10881)}), -1, 0, insane);
    check(join({kPhoto, kHighlighted, groupInfo(1, 1, 9)}), 1, 1, "");
    check(join({kBurst, groupInfo(1, 1, 10000)}), 1, 10000, "");
    check(join({kBurst, groupInfo(1, 0, 10000)}), 1, 0, "damaged group");
    check(join({kBurst, groupInfo(1, ~1u, ~0u)}), 1, 2, "");
}

TEST_F(UploadQueries, WaitForASilentDatabaseOnceAPageAndAskForTheModelOnce) {
    int modelQuestions = 0;
    platform.setting = [&](int, uint32_t, uint32_t*, void*) { return ++modelQuestions, -1; };
    const Bytes chapters = join({itemRecord(2, "VXMF0012.MP4"), groupInfo(12, 0, 99)});
    const Bytes page = join({listHeader(2, 2), chapters, chapters});
    const Bytes member =
        join({responseHeader(4, 1), itemRecord(0, "VXMF0012.MP4"), videoInfo(700)});
    platform.exchanges = {reply(member), reply({1}), reply(responseHeader(4, 0, 9))};
    const Delivered delivered = walk(page);
    EXPECT_EQ(delivered.items.at(0), "2 g12 0-99 m0 h0 d1 c0 s2 - - p1104");
    EXPECT_EQ(delivered.items.at(1), "2 g12 0-99 m0 h0 d0 c0 s2 - - p1104");
    EXPECT_EQ(delivered.files.size(), 200u);
    EXPECT_EQ(platform.requests.size(), 3 + 11u);
    EXPECT_EQ(modelQuestions, 1);
}

uint32_t counts[32];
const auto items = [] { return fetch(dbGetZEPItems).result; };
const auto sessions = [] { return fetch(dbGetZEPSessionFileList).result; };
const auto histogram = [] { return dbGetMediaHistogram(kAddress, nullptr, counts); };
int setStatus(const char* dirName, const char* fileName) {
    return dbSetZEPUploadStatus(dirName, fileName, 5, kAddress);
}
const auto setFileStatus = [] { return setStatus("100VMEDI", "VXMF0012.MP4"); };

TEST_F(UploadQueries, FailWhenTheDatabaseCannotBeReached) {
    g_logLevel = UTIL_LOG_DEBUG;
    std::vector<Bytes> sent;
    for (int (*ask)() : {+items, +sessions, +histogram, +setFileStatus}) {
        platform.initResults = {-2};
        EXPECT_EQ(ask(), -1);
        EXPECT_EQ(platform.requests.size(), 11 * sent.size());
        EXPECT_EQ(ask(), -1);
        sent.push_back(platform.requests.back());
        EXPECT_EQ(platform.requests.size(), 11 * sent.size());
    }
    EXPECT_EQ(platform.closed, 4);
    for (const char* line :
         {"ERROR:*pBytesRead=-1, RTOS transaction failed.\n", "ERROR:RTOS transaction failed.\n",
          "ERROR:Failed to ininialize IPC: -1\n",
          "DEBUG:         list_options video_grouping 1\n"}) {
        EXPECT_TRUE(platform.logged(line)) << line;
    }
    const std::vector<Bytes> requests = {
        words({0, 4, 0x123, 0, 2, 0xFFFFFB00}), words({0, 4, 0x123, 0, 0, 0x2400}),
        words({10, 1, 0x123}),
        join({words({9, 1, 0x123}), text("100VMEDIVXMF0012.MP4"), words({5})})};
    EXPECT_EQ(sent, requests);
    EXPECT_EQ(setStatus("100VMED", "VXMF0012.MP4"), -1);
    EXPECT_EQ(setStatus("100VMEDIA", "VXMF0012.MP4"), -1);
    EXPECT_EQ(setStatus("100VMEDI", "VXMF0012.MP"), -1);
    EXPECT_EQ(setStatus("100VMEDI", "VXMF0012.MP4X"), -1);
    EXPECT_EQ(platform.channels.size(), 8u);
}

Bytes wholePage() {
    const Bytes moreInfo = words({1920, 1080, 30, 1, 1, 0, 0});
    const Bytes video = join({itemRecord(0, "VXMF0012.MP4", 2, ITEM_ATTRIBUTE_TR), kGumi, kParent});
    const Bytes chapters = join({itemRecord(2, "VXMF0013.MP4"), kGumi, moreInfo});
    return join({listHeader(4, 14), video, moreInfo, videoInfo(1500, 2), words({10, 20}), chapters,
                 groupInfo(13, 0, 3, 1), words({0xB0}), kHighlighted, kGumi, moreInfo,
                 groupInfo(1, 1, 33, 2), words({0xFFFFFFF3, 0x80}), Bytes(8), kPhoto, kGumi,
                 moreInfo});
}

TEST_F(UploadQueries, BearAnyReply) {
    std::set<std::string> lines = sweep("page", wholePage(), [](const Bytes& reply) {
        const Delivered delivered = fetch(dbGetZEPItems);
        const bool answered = reply.size() >= 20;
        const Bytes words = cut(reply, reply.size() / 4 * 4);  // a part of a word is none
        EXPECT_EQ(delivered.session, answered ? wordOf(words, 36) : kUntouched);
        EXPECT_EQ(delivered.total, answered ? wordOf(words, 32) : kUntouched);
        const uint32_t returned = std::min(wordOf(reply, 8), 4u);
        const int walked = answered ? walk(with(reply, 8, returned)).result : -3;
        EXPECT_EQ(delivered.result, walked != 0 ? walked : static_cast<int>(returned));
    });
    // The walker gets a heap block of the reply's exact size.
    sweep("walker", wholePage(), [](const Bytes& reply) {
        const Delivered delivered = walk(reply);
        EXPECT_THAT(delivered.result, testing::AnyOf(-1, 0, delivered.items.size()));
        EXPECT_LE(delivered.files.size(), 2 * 10000 + 2u);
    });
    sweep("upload status", responseHeader(9, 1), [](const Bytes& reply) {
        EXPECT_EQ(setFileStatus(), 0);
        EXPECT_EQ(platform.pauses.size(), reply.size() < 20 || wordAt(reply, 4) != 0 ? 1u : 0u);
    });
    lines.merge(
        sweep("histogram", join({responseHeader(10, 32), Bytes(128, 7)}), [](const Bytes& reply) {
            std::fill_n(counts, 32, kUntouched);
            EXPECT_EQ(histogram(), 0);
            for (size_t i = 0; i < 32; ++i) {
                ASSERT_EQ(counts[i], reply.size() < 20 ? kUntouched : wordOf(reply, 20 + 4 * i))
                    << i;
            }
        }));
    platform.logs.assign(lines.begin(), lines.end());
    for (const char* line :
         {"WARN :Tokens don't match 0 291", "WARN :error on IPC received, status 9\n",
          "WARN :command 0 requested 4, response returned 5, setting response returned to 4\n",
          "WARN :3 total_entries, but 0 starting_index with 4 count_returned\n",
          "WARN :truncating to 3 items in this page\n",
          "ERROR:*pBytesRead=19 < sizeof db_response_header:20, failed, ret -3\n",
          "DEBUG:                list_options sort_order 1\n",
          "DEBUG:ResponseHeader: command_type 10\n",
          "DEBUG:filename: V0010001.JPG format: V%03d%04d.JPG\n",
          "WARN :error on IPC received, retrying, status 9\n",
          "WARN :19 bytes received, expecting 20, retrying\n"}) {
        EXPECT_TRUE(platform.logged(line)) << line;
    }
}

}  // namespace

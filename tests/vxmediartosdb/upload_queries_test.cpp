// The page fetches with their walker, the upload status and the histogram.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>

#include "libvxMediaRTOSDB/src/list_query.h"
#include "libvxMediaRTOSDB/src/page_walker.h"
#include "libvxMediaRTOSDB/src/util_log.h"
#include "libvxMediaRTOSDB/src/zep_queries.h"
#include "platform/debug_level.h"
#include "tests/support/db_replies.h"

namespace {

using namespace scripted;
using Lines = std::vector<std::string>;

class UploadQueries : public testing::Test {
  protected:
    void SetUp() override { reset(); }
    void TearDown() override { g_logLevel = UTIL_LOG_ERROR; }

    static void takeItem(void* ctx, zep_item_s* item) {
        char line[256];
        std::snprintf(line, sizeof line,
                      "%u %s/%s g%u %u-%u mask%02x us%u hl%u score%u t%u d%u clip%u size%llx %s %s",
                      item->content_type, item->dir_name, item->file_name, item->group_number,
                      item->first_number, item->last_number,
                      item->member_mask ? item->member_mask[0] : 0, item->upload_status,
                      item->highlight, item->score, item->timestamp, item->duration_s, item->clip,
                      static_cast<unsigned long long>(item->size_bytes),
                      item->gumi ? item->gumi : "-", item->parent_gumi ? item->parent_gumi : "-");
        static_cast<Lines*>(ctx)->emplace_back(line);
    }

    static void takeFile(void* ctx, char* dirName, char* fileName) {
        static_cast<Lines*>(ctx)->push_back(std::string(dirName) + "/" + fileName);
    }

    int walk(const Bytes& page, uint32_t startingIndex = 0) {
        mItems.clear();
        mFiles.clear();
        return processQueryResponse(page.data(), static_cast<int>(page.size()), startingIndex,
                                    takeItem, &mItems, takeFile, &mFiles);
    }

    // The log's lines without level and place.
    static Lines messages() {
        Lines lines;
        for (const std::string& line : platform.logs)
            lines.push_back(line.substr(15, line.rfind(" @") - 15));
        return lines;
    }

    Lines mItems;
    Lines mFiles;
    uint32_t mSession = 0;
    uint32_t mTotal = 0;
};

TEST_F(UploadQueries, WalkEveryKindOfItem) {
    const std::string plain = " us4 hl0 score100 t1000 ";
    const std::string single = " g0 0-0 mask00" + plain;
    const std::string dir = "100VMEDI/";
    const Bytes gumi(16, 0xAB);
    const Bytes parent(16, 0x01);
    const std::string gumiText = "ABABABABABABABABABABABABABABABAB";
    const std::string parentText = "01010101010101010101010101010101";
    const struct {
        uint32_t options;
        Bytes item;
        std::string expected;
        Lines files;
    } rows[] = {
        {2,
         join({itemRecord(0, "VXMF0012.MP4"), videoInfo(1499, 2, 8), words({5, 6})}),
         "0 100VMEDI/VXMF0012.MP4" + single + "d1 clip1 size100000002 - -",
         {dir + "VXMF0012.MP4"}},
        {2,
         join({itemRecord(12, "VXMF0012.MP4"), videoInfo(0xFFFFFFFF)}),
         "12 100VMEDI/VXMF0012.MP4" + single + "d4294967 clip0 size100000002 - -",
         {dir + "VXMF0012.MP4"}},
        {2,
         itemRecord(11, "ANYTHING.BIN"),
         "11 100VMEDI/ANYTHING.BIN" + single + "d0 clip0 size100000002 - -",
         {dir + "ANYTHING.BIN"}},
        {2,
         join({itemRecord(1, "VHAA0003.MP4"), groupInfo(1001, 3, 5)}),
         "1 100VMEDI/VHAA0003.MP4 g1001 3-5 mask00" + plain + "d2 clip0 size200000003 - -",
         {dir + "VHAA0003.MP4", dir + "VHAA0004.MP4", dir + "VHAA0005.MP4"}},
        {2,
         join({itemRecord(2, "VH010012.360"), groupInfo(12, 0, 3, 2), words({0xA0})}),
         "2 100VMEDI/VH010012.360 g12 0-3 maska0" + plain + "d1 clip0 size200000003 - -",
         {dir + "VH010012.360", dir + "VH030012.360"}},
        {2,
         join({itemRecord(6, "V0010001.JPG", 1), groupInfo(1, 1, 33, 31), words({1, 0x80}),
               words({0, 0})}),
         "6 100VMEDI/V0010001.JPG g1 1-33 mask01 us4 hl1 score100 t1000 d0 clip0 size200000003 - -",
         {dir + "V0010008.JPG", dir + "V0010033.JPG"}},
        {2,
         join({itemRecord(5, "V0010001.JPG", 1), groupInfo(1, 1, 2), words({0})}),
         "5 100VMEDI/V0010001.JPG g1 1-2 mask00 us4 hl1 score100 t1000 d0 clip0 size200000003 - -",
         {dir + "V0010001.JPG", dir + "V0010002.JPG"}},
        {2,
         join({itemRecord(10, "V0010001.JPG"), groupInfo(1, 2, 1)}),
         "10 100VMEDI/V0010001.JPG g1 2-1 mask00" + plain + "d0 clip0 size200000003 - -",
         {}},
        {4,
         join({itemRecord(4, "VXAA0001.JPG"), gumi}),
         "4 100VMEDI/VXAA0001.JPG" + single + "d0 clip0 size100000002 " + gumiText + " -",
         {dir + "VXAA0001.JPG"}},
        {12,
         join({itemRecord(9, "VXAA0001.JPG", 0, 1), gumi, parent, Bytes(28, 9)}),
         "9 100VMEDI/VXAA0001.JPG" + single + "d0 clip0 size100000002 " + gumiText + " " +
             parentText,
         {dir + "VXAA0001.JPG"}},
        {4,
         join({itemRecord(7, "VXAA0001.JPG", 0, 1u << 10), gumi, parent}),
         "7 100VMEDI/VXAA0001.JPG" + single + "d0 clip0 size100000002 " + gumiText + " " +
             parentText,
         {dir + "VXAA0001.JPG"}},
        {2,
         itemRecord(4, std::string("A\0%s\xff\nBCDEFG", 12)),
         "4 100VMEDI/A" + single + "d0 clip0 size100000002 - -",
         {dir + "A"}},
    };
    // Every member lasts 700 ms.
    platform.answer = [](const Bytes& request) {
        return reply(join({words({4, 0, 1, 3, wordAt(request, 8)}), itemRecord(0, "VXMF0012.MP4"),
                           videoInfo(700)}));
    };
    for (const auto& row : rows) {
        platform.requests.clear();
        const Bytes page =
            join({listHeader(2, row.options), row.item, itemRecord(4, "LAST0000.JPG"),
                  Bytes(row.options & 4 ? 16 : 0), Bytes(row.options & 8 ? 28 : 0)});
        EXPECT_EQ(walk(page), 0);
        ASSERT_EQ(mItems.size(), 2u) << row.expected;
        EXPECT_EQ(mItems[0], row.expected);
        EXPECT_NE(mItems[1].find("/LAST0000.JPG"), std::string::npos);
        mFiles.pop_back();
        EXPECT_EQ(mFiles, row.files);
        EXPECT_EQ(platform.requests.size(),
                  isVideoGroup(wordAt(row.item, 0)) ? row.files.size() : 0);
        EXPECT_EQ(processQueryResponse(page.data(), static_cast<int>(page.size()), 0, nullptr,
                                       nullptr, nullptr, nullptr),
                  0);
    }
    EXPECT_EQ(platform.opened, platform.closed);
    // The member's name goes out in the form that tells durations, never the 360 one.
    EXPECT_TRUE(walk(join({listHeader(1), rows[4].item})) == 0);
    EXPECT_EQ(Bytes(platform.requests.back().begin() + 12, platform.requests.back().end()),
              text("100VMEDIVH030012.MP4"));
    EXPECT_TRUE(platform.logged("damaged group"));
}

TEST_F(UploadQueries, EndTheWalkWhereThePageEnds) {
    const Bytes video = join({itemRecord(3, "VXMF0012.MP4"), videoInfo(1, 2), words({5, 6})});
    const Bytes page = join({listHeader(4), video, video, video, video});
    g_debug_level = 16;
    for (size_t length = 0; length <= page.size(); length++) {
        platform.logs.clear();
        const auto whole = static_cast<int>(length < 40 ? 0 : (length - 40) / video.size());
        EXPECT_EQ(walk({page.begin(), page.begin() + static_cast<long>(length)}),
                  whole == 4 ? 0 : whole)
            << length;
        EXPECT_EQ(mItems.size(), static_cast<size_t>(whole));
        EXPECT_EQ(platform.logged("[processQueryResponse:"), 33 <= length && length < page.size())
            << length;
    }
    const struct {
        uint32_t returned, total, start, items;
        int result;
    } rows[] = {{15, 3, 0, 3, 0},
                {4, 10, 7, 3, 0},
                {4, 10, 10, 0, 0},
                {4, 10, 11, 4, 0},
                {15, 15, 0, 4, 4},
                {0, 15, 0, 0, 0},
                {0x80000000, 0xFFFFFFFF, 0, 0, 0}};
    for (const auto& row : rows) {
        Bytes claiming = page;
        putWord(claiming, 8, row.returned);
        putWord(claiming, 32, row.total);
        EXPECT_EQ(walk(claiming, row.start), row.result) << row.returned;
        EXPECT_EQ(mItems.size(), row.items) << row.returned;
    }
}

TEST_F(UploadQueries, RejectPagesThatMakeNoSense) {
    const Bytes photo = itemRecord(4, "VXAA0001.JPG");
    const Bytes group = join({itemRecord(5, "V0010001.JPG"), groupInfo(1, 1, 0x7FFFFFFF, 1)});
    const struct {
        Bytes page;
        int result;
        std::string log;
    } rows[] = {
        {join({listHeader(1), itemRecord(13, "VXAA0001.JPG")}), -1, "Invalid content type: 13\n"},
        {join({listHeader(2), photo, itemRecord(0xFFFFFFFF, "VXAA0001.JPG")}), -1,
         "Invalid content type: -1\n"},
        {join({listHeader(2), photo, group}), -1, "Mask size failed sanity check. Size=268435456"},
        // 40 + 76 + 24 bytes precede the mask: one word more than the room that is left.
        {join({listHeader(1), itemRecord(5, "V0010001.JPG"), groupInfo(1, 1, 10881, 1)}), -1,
         "Mask size failed sanity check. Size=1364"},
        {join({listHeader(1), itemRecord(5, "V0010001.JPG"), groupInfo(1, 1, 10880, 1)}), 0, ""},
        {join({listHeader(1), itemRecord(5, "V0010001.JPG", 1), groupInfo(1, 1, 10881)}), -1,
         "Mask size failed sanity check. Size=1364"},
        {join({listHeader(2), photo, itemRecord(5, "V0010001.JPG", 1), groupInfo(1, 1, 9)}), 1, ""},
    };
    for (const auto& row : rows) {
        platform.logs.clear();
        EXPECT_EQ(walk(row.page), row.result);
        EXPECT_EQ(platform.logs.size(), row.log.empty() ? 0u : 1u);
        EXPECT_TRUE(platform.logged(row.log) || row.log.empty()) << row.log;
    }
}

TEST_F(UploadQueries, FetchPages) {
    const Bytes photos = join({itemRecord(4, "VXAA0001.JPG"), itemRecord(4, "VXAA0002.JPG"),
                               itemRecord(4, "VXAA0003.JPG")});
    const Bytes page = join({listHeader(3), photos});
    Bytes refused = page;
    putWord(refused, 4, 9);
    Bytes greedy = page;
    putWord(greedy, 8, 16);
    putWord(greedy, 32, 3);
    const struct {
        Bytes reply;
        int result;
        size_t items;
        uint32_t session, total;
        std::string log;
    } rows[] = {
        {page, 3, 3, kSessionId, 3, "Tokens don't match 0 291"},
        {refused, 3, 3, kSessionId, 3, "error on IPC received, status 9\n"},
        {greedy, 15, 3, kSessionId, 3,
         "command 0 requested 15, response returned 16, setting response returned to 15\n"},
        {greedy, 15, 3, kSessionId, 3,
         "3 total_entries, but 0 starting_index with 15 count_returned\n"},
        {greedy, 15, 3, kSessionId, 3, "truncating to 3 items in this page\n"},
        {Bytes(page.begin(), page.begin() + 190), 1, 1, kSessionId, 3, ""},
        {Bytes(page.begin(), page.begin() + 20), 3, 0, 0, 0, ""},
        {Bytes(page.begin(), page.begin() + 19), -3, 0, 0, 0,
         "*pBytesRead=19 < sizeof db_response_header:20, failed, ret -3\n"},
        {Bytes(1501), -1, 0, 0, 0, "*pBytesRead=-1, RTOS transaction failed.\n"},
    };
    for (bool sessionFiles : {false, true}) {
        for (const auto& row : rows) {
            reset();
            g_logLevel = UTIL_LOG_WARN;
            mItems.clear();
            mFiles.clear();
            mSession = mTotal = 0;
            platform.then(reply(row.reply), 11);
            const auto fetch = sessionFiles ? dbGetZEPSessionFileList : dbGetZEPItems;
            EXPECT_EQ(fetch(15, 0, reinterpret_cast<void*>(0x123), takeItem, &mItems, takeFile,
                            &mFiles, &mSession, &mTotal),
                      row.result);
            EXPECT_EQ(mItems.size(), row.items);
            EXPECT_EQ(mFiles.size(), row.items);
            EXPECT_EQ(mSession, row.session);
            EXPECT_EQ(mTotal, row.total);
            EXPECT_EQ(platform.closed, 1);
            EXPECT_EQ(platform.requests.at(0), words({0, 15, 0x123, 0, sessionFiles ? 0u : 2u,
                                                      sessionFiles ? 0x2400u : 0xFFFFFB00u}));
            EXPECT_TRUE(platform.logged(row.log) || row.log.empty()) << row.log;
        }
    }
    reset();
    platform.initResults = {-2};
    EXPECT_EQ(
        dbGetZEPItems(15, 0, nullptr, takeItem, &mItems, takeFile, &mFiles, &mSession, nullptr),
        -1);
    EXPECT_EQ(platform.closed, 0);
    g_logLevel = UTIL_LOG_DEBUG;
    platform.then(reply(page), 2);
    EXPECT_EQ(
        dbGetZEPItems(15, 0, nullptr, takeItem, &mItems, takeFile, &mFiles, &mSession, nullptr), 3);
    EXPECT_THAT(
        platform.logs.back(),
        testing::ContainsRegex("dbGetZEPItems time 0 sec, [0-9]+ usec, count_returned:3\n"));
    EXPECT_EQ(dbGetZEPSessionFileList(15, 0, nullptr, takeItem, &mItems, takeFile, &mFiles,
                                      &mSession, nullptr),
              3);
    EXPECT_THAT(platform.logs.back(),
                testing::ContainsRegex(
                    "dbGetZEPSessionFileList time 0 sec, [0-9]+ usec, count_retured:3\n"));
}

TEST_F(UploadQueries, LogWhatGoesOverTheChannel) {
    g_logLevel = UTIL_LOG_DEBUG;
    platform.then(reply(join({words({0, 0, 1, 3, 0x1A2B, 5, 5, 6, 7, 0xBEEF})})));
    uint8_t response[1500];
    int bytesRead = 0;
    EXPECT_EQ(queryRTOSdb(1, 5, reinterpret_cast<void*>(0x1A2B), response, 10, 0x500, &bytesRead),
              0);
    EXPECT_THAT(
        messages(),
        testing::ElementsAre(
            "Request: command_type 0\n", "         request_count 1\n",
            "         token 0x00001A2B\n", "         starting_index 5\n",
            "         list_options sort_order 0\n", "         list_options video_grouping 1\n",
            "         list_options include_gumi 0\n", "         list_options include_more_info 1\n",
            "         query_options 0x00000500\n",
            "         query_options RTOS_DB_QUERY_METADATA_SESSION_FILES: 1\n",
            "queryRTOSdb() req->command_type:0, list_options:0xa,10, query_options:0x500,1280",
            "ResponseHeader: command_type 0\n", "                status 0\n",
            "                count_returned 1\n", "                rtos_db_version 3\n",
            "                token 0x00001A2B\n", "                start_index 5\n",
            "                list_options sort_order 1\n",
            "                list_options video_grouping 0\n",
            "                list_options include_gumi 1\n",
            "                list_options include_more_info 0\n",
            "                query_options 0x00000006\n", "                total_entries 7\n",
            "                session_id 0x0000BEEF\n"));
    platform.logs.clear();
    walk(
        join({listHeader(1), itemRecord(6, "V0010001.JPG"), groupInfo(1, 2, 3, 1), words({0x80})}));
    EXPECT_THAT(messages(), testing::ElementsAre(
                                "\n\ngroupInfo->group_number, 1\n", "groupInfo->first_number, 2\n",
                                "groupInfo->last_number, 3\n", "groupInfo->num_missing, 1\n",
                                "groupInfo->group_size, 8589934595\n", "missing:", "80 ", "00 ",
                                "00 ", "00 ", "filename: V0010001.JPG format: V%03d%04d.JPG\n"));
    platform.logs.clear();
    EXPECT_EQ(dbSetZEPUploadStatus("100VMEDI", "VXMF0012.MP4", 5, nullptr), -1);
    EXPECT_THAT(messages(), testing::IsSupersetOf({"         dir_name 100VMEDI\n",
                                                   "         file_name VXMF0012.MP4\n",
                                                   "         upload_status 5\n"}));
}

TEST_F(UploadQueries, WriteTheStatusAndReadTheHistogram) {
    const Bytes counts = words({1, 2, 3});
    const struct {
        int init, result;
        Bytes reply;
        size_t pauses;
        uint32_t count;  // the first of the histogram
        std::string log;
    } rows[] = {
        {0, 0, join({responseHeader(10, 1), counts}), 0, 1, ""},
        {0, 0, join({responseHeader(10, 1, 6), counts}), 1, 1,
         "error on IPC received, retrying, status 6\n"},
        {0, 0, responseHeader(10, 1), 0, 0, ""},
        {0, 0, Bytes(19), 1, 77, "19 bytes received, expecting 20, retrying\n"},
        {0, -1, Bytes(1501), 11, 77, "RTOS transaction failed.\n"},
        {-4, -1, {}, 0, 77, "Failed to ininialize IPC: -1\n"},
    };
    const Bytes names = text("100VMEDIVXMF0012.MP4");
    for (const auto& row : rows) {
        for (bool histogram : {false, true}) {
            reset();
            g_logLevel = UTIL_LOG_WARN;
            platform.initResults = {row.init};
            platform.then(reply(row.reply), 11);
            uint32_t buckets[32] = {77};
            void* token = reinterpret_cast<void*>(0x123);
            EXPECT_EQ(histogram ? dbGetMediaHistogram(token, nullptr, buckets)
                                : dbSetZEPUploadStatus("100VMEDI", "VXMF0012.MP4", 5, token),
                      row.result);
            EXPECT_EQ(buckets[0], histogram ? row.count : 77);
            EXPECT_EQ(platform.pauses.size(), row.pauses);
            EXPECT_EQ(platform.closed, platform.opened);
            EXPECT_TRUE(platform.logged(row.log) || row.log.empty()) << row.log;
            for (const Bytes& request : platform.requests)
                EXPECT_EQ(request, histogram ? words({10, 1, 0x123})
                                             : join({words({9, 1, 0x123}), names, words({5})}));
        }
    }
    for (const char* dir : {"100VMED", "100VMEDIA", ""})
        EXPECT_EQ(dbSetZEPUploadStatus(dir, "VXMF0012.MP4", 5, nullptr), -1);
    for (const char* file : {"VXMF0012.MP", "VXMF0012.MP4X", ""})
        EXPECT_EQ(dbSetZEPUploadStatus("100VMEDI", file, 5, nullptr), -1);
    EXPECT_EQ(platform.channels.size(), 1u);
}

}  // namespace

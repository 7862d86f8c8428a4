// The metadata of one file: each data set, and what may go wrong on the way to it.
#include <gtest/gtest.h>

#include <filesystem>

#include "libvxMediaRTOSDB/src/exchange/rtos_connection_guard.h"
#include "libvxMediaRTOSDB/src/http/text/media_db_output_guard.h"
#include "libvxMediaRTOSDB/src/http/text/text_buffer.h"
#include "tests/responses/produced_response.h"
#include <mediacheckd/vxMediaRTOSDB/media_list.h>
#include <mediacheckd/vxMediaRTOSDB/media_metadata.h>
#include <mediacheckd/vxMediaRTOSDB/metadata_query.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

using namespace scripted;

// A file of which the database tells everything.
struct File {
    uint32_t contentType = 0;
    uint32_t highlights = 2;
    uint32_t attributes = ITEM_ATTRIBUTE_EIS | ITEM_ATTRIBUTE_AUDIO_WIND | ITEM_ATTRIBUTE_HDR;
    Bytes gumis = join({Bytes(16, 0xAB), Bytes(16, 0xCD)});  // its own and its parent's
    uint32_t refusedCommand = 0xFFFFFFFF;
    uint32_t refusal = 0;     // the status of its reply
    size_t replySize = 1500;  // at most
    size_t exchanges = 3;     // before the channel fails
    uint32_t base = 0;        // of the numbers that may be large

    Exchange answer(const Bytes& request) const {
        if (platform.requests.size() > exchanges) {
            return sendFails();
        }
        const uint32_t command = wordAt(request, 0);
        if (command == refusedCommand) {
            return reply(responseHeader(command, 1, refusal));
        }
        Bytes answer = responseHeader(command, 1);
        if (command == DB_CMD_MORE_INFO) {
            append(answer, words({base + 1920, base + 1080, base + 60000, base + 1001}));
            append(answer, words({base + 1, base - 1, 0}));
        } else {
            append(answer, itemRecord(contentType, "V0010001.MP4", 5, attributes));
            putWord(answer, 68, base + 1);  // the upper half of the size
        }
        if (command == DB_CMD_VIDEO_SPECIFIC_INFO && isVideo(contentType)) {
            append(answer, videoInfo(base + 1500, highlights, base + 1));
            for (uint32_t i = 0; i < highlights; ++i) {
                append(answer, words({base + i * 1000}));
            }
        } else if (command == DB_CMD_FILE_GUMI) {
            append(answer, gumis);
        }
        answer.resize(std::min(answer.size(), replySize));
        return reply(answer);
    }
};

Produced metadataOf(const File& file, const std::string& query) {
    resetWithCard();
    platform.answer = [&](const Bytes& request) { return file.answer(request); };
    return produce(
        [&] { return generateMetadata(nullptr, (query + "&p=100VMEDI/V0010001.MP4").c_str()); });
}

void expect(const char* query, const File& file, int status, const std::string& body = "") {
    SCOPED_TRACE(query + (" of content type " + std::to_string(file.contentType)));
    const Produced produced = metadataOf(file, query);
    EXPECT_EQ(produced.status, status);
    EXPECT_EQ(produced.body, body);
}

TEST(Metadata, DataSets) {
    const std::string video = R"({"dur":"2","c":"1","avc_profile":"9","profile":"8",)";
    const std::string start = R"({"cre":"1000","s":"4294967298",)";
    const std::string photo = start + R"("hc":"5","us":"4","eis":"1",)";
    const std::string camera = R"("rot":"90","fov":"120",)";
    const std::string gumi = R"("gumi":"abababababababababababababababab")";
    const std::string both = gumi + R"(,"pgumi":"cdcdcdcdcdcdcdcdcdcdcdcdcdcdcdcd",)";
    const std::string size = R"("w":"1920","h":"1080")";
    const std::string more =
        size + R"(,"fps":"60000","fps_denom":"1001","prog":"1","subsample":"-1"})";
    const uint32_t child = ITEM_ATTRIBUTE_PARENT_GUMI | ITEM_ATTRIBUTE_TR | (2u << 2) |
                           ITEM_ATTRIBUTE_AUDIO_AUTO | ITEM_ATTRIBUTE_MP | ITEM_ATTRIBUTE_WDR |
                           ITEM_ATTRIBUTE_RAW | ITEM_ATTRIBUTE_EIS;
    const Bytes ofNobody = join({Bytes(16, 0xAB), Bytes(16, 0xFF)});
    expect("t=videoinfo", {0}, 200, video + R"("tag_count":2,"tags":[0,1000],)" + more);
    expect("t=videoinfo", {12, 0}, 200, video + R"("tag_count":0,"tags":[],)" + more);
    expect("t=dur", {2}, 200, R"({"dur":"2","c":"1","profile":"8"})");
    expect("t=v4info", {3, 2, child}, 200,
           start + R"("us":"4","eis":"1","pta":"1","ao":"auto","tr":"1","mp":"1",)" + both +
               R"("ls":"7","cl":"1","hc":"2","hi":[0,1000],"dur":"2",)" + more);
    expect("t=v4info", {12, 0, child}, 200,
           photo + R"("wdr":"1","raw":"1","tr":"1",)" + both + size + "}");
    expect("t=v4info", {7, 0, ITEM_ATTRIBUTE_EIS, Bytes(32, 0xFF)}, 200,
           photo + R"("wdr":"0","raw":"0","tr":"0"})");
    expect("t=v5info", {1, 0, ITEM_ATTRIBUTE_AUDIO_STEREO, Bytes(32)}, 200,
           start + R"("mahs":"100","us":"4","eis":"0","pta":"0","ao":"stereo","tr":"0","mp":"0",)" +
               R"("ct":"1",)" + camera + R"("ls":"7","cl":"1","avc_profile":"9",)" +
               R"("profile":"8","hc":"0","hi":[],"dur":"2",)" + more);
    expect("t=v5info", {4}, 200,
           photo + R"("hdr":"1","wdr":"0","raw":"0","tr":"0","mp":"0","ct":"4",)" + camera + gumi +
               "," + size + "}");
    expect("t=v5info", {13, 0, child, ofNobody}, 200,
           photo + R"("hdr":"0","wdr":"1","raw":"1","tr":"1","mp":"1","ct":"13",)" + camera + gumi +
               "}");
    expect("t=upload", {4}, 200, R"({"us":"4"})");
}

TEST(Metadata, FailsWithoutABody) {
    expect("t=videoinfo", {4}, 501);
    expect("t=upload&status=2", {.refusedCommand = 9, .refusal = 1}, 503);
    expect("t=upload", {.refusedCommand = 2, .refusal = 3}, 404);
    expect("t=v4info", {.refusedCommand = 8, .refusal = 5}, 500);
    expect("t=v5info", {.refusedCommand = 4, .refusal = 4}, 404);
    expect("t=v4info", {0xFFFFFFFF}, 404);
    expect("t=dur", {.contentType = 12, .replySize = 124}, 500);
    // An object that is too long.
    expect("t=v5info", {.highlights = 99, .attributes = 1, .base = 0x80000000}, 500);
    for (size_t n = 0; n < 4; ++n) {
        EXPECT_EQ(metadataOf({.exchanges = n}, "t=v5info").status, n < 3 ? 500 : 200);
        EXPECT_EQ(platform.requests.size(), n < 3 ? n + 11 : 3);
    }
}

TEST(Metadata, ListsTheFirst99Tags) {
    const Produced produced = metadataOf({0, 120}, "t=videoinfo");
    EXPECT_NE(produced.body.find(R"("tag_count":120,"tags":[0,1000,)"), std::string::npos);
    EXPECT_NE(produced.body.find(",97000,98000],"), std::string::npos);
}

TEST(Metadata, WritesTheStatusBeforeItAsks) {
    EXPECT_EQ(metadataOf({4}, "t=upload&status=258").body, R"({"us":"4"})");
    ASSERT_EQ(platform.requests.size(), 2u);
    EXPECT_EQ(platform.requests[0], join({words({9, 1, wordAt(platform.requests[0], 8)}),
                                          text("100VMEDIV0010001.MP4"), words({258})}));
    EXPECT_EQ(wordAt(platform.requests[1], 0), 2u);
}

TEST(Metadata, AppendsTheWholeObjectOrFails) {
    resetWithCard();
    platform.answer = [](const Bytes& request) { return File{.exchanges = 99}.answer(request); };
    QuerySettings settings;
    ASSERT_EQ(parseMetadataQuery("t=videoinfo&p=100VMEDI/V0010001.MP4", &settings), 200);
    RtosConnectionGuard connection;
    MediaDBOutputGuard output(nullptr);
    TextBuffer entry = entryOf(*output.get());
    const auto statusAfter = [&](size_t length) {
        entry.clear();
        entry.append(here(), std::string(length, ' '));
        return generateMetadataVideoInfo(output.get(), connection.get(), &settings);
    };
    EXPECT_EQ(statusAfter(kEntryLimit + 1), 200);  // what was lost before does not count
    const size_t room = kEntryLimit - entry.text().size();
    EXPECT_EQ(statusAfter(room), 200);
    EXPECT_EQ(statusAfter(room + 1), 500);
    EXPECT_EQ(statusAfter(room + 2), 500);  // the last key does not fit
    EXPECT_EQ(entry.text(), "");            // and nothing closes the object
    const size_t requests = platform.requests.size();
    EXPECT_EQ(statusAfter(kEntryLimit), 500);  // where it cannot even begin, nothing is asked
    EXPECT_EQ(platform.requests.size(), requests);
    settings.filter = eDBFILTER_T_GET_DUR;
    EXPECT_EXIT((void)statusAfter(0), testing::ExitedWithCode(255), "");
}

// Every producer, with what does not depend on its query.
TEST(Producers, WithoutConnectionCardOrMemory) {
    const std::string list = R"({"id":"12345","media":[]})";
    const struct {
        std::function<int()> run;
        int withoutCard;
        std::string body;           // with the identity of the card
        std::string withoutMemory;  // for the buffers
        bool logsConnection;        // and not only what the connection logs
        std::vector<const char*> buffers = {"localBuffer ", "localDirectoryBuffer ",
                                            "localEntryBuffer "};
    } producers[] = {
        {[] { return generateMetadata(nullptr, "t=dur&p=100VMEDI/V0010001.MP4"); }, 404, "", "",
         true},
        {[] { return generateMediaList(nullptr, "f=video"); }, 404, list, "", false},
        {[] { return generateMediaList(nullptr, "f=gumi&folder=A&files=B"); }, 404, list, list,
         true},
        {[] { return dbGetPagedList(nullptr, 1, 9, 0, 0, 0, 0, nullptr); },
         500,
         list,
         "",
         false,
         {""}},
    };
    for (const auto& producer : producers) {
        SCOPED_TRACE(&producer - producers);
        const auto expectFailure = [&](int status, const std::string& body,
                                       const std::string& log) {
            const Produced produced = produce(producer.run);
            EXPECT_EQ(produced.status, status);
            EXPECT_EQ(produced.body, body);
            EXPECT_TRUE(platform.logged(log)) << log;
            EXPECT_EQ(platform.logged("rtosConnectionCtor ret < 0"),
                      producer.logsConnection && log.starts_with("vxIpcInit"));
        };
        resetWithCard();
        platform.initResults = {-7};
        expectFailure(500, producer.body, "vxIpcInit fail, ret -7\n");

        resetWithCard();  // and a database that fails every exchange
        std::filesystem::remove_all(kCardFolder);
        std::string cardless = producer.body;
        expectFailure(producer.withoutCard, cardless.empty() ? "" : cardless.replace(7, 5, "0"),
                      "getCardIDStr ret < 0");

        for (size_t n = 0; n < producer.buffers.size(); ++n) {
            resetWithCard();
            failAllocation(static_cast<int>(n));
            expectFailure(500, producer.withoutMemory,
                          std::string("malloc ") + producer.buffers[n] + "failed medialist\n");
        }
    }
}

TEST(Producers, LogTheirSettingsAndTheQueriesTheyReject) {
    resetWithCard();
    g_logLevel = UTIL_LOG_DEBUG;
    EXPECT_EQ(produce([] { return generateMediaList(nullptr, "f=x"); }).status, 501);
    EXPECT_TRUE(platform.logged("parseMediaListQuery ret: 501, query:'f=x'"));
    EXPECT_TRUE(platform.logged("pSettings->whitelistMask = 0xffffffff"));
    platform.logs.clear();
    EXPECT_EQ(produce([] { return generateMetadata(nullptr, "t=x"); }).status, 501);
    EXPECT_TRUE(platform.logged("parseMetadataQuery ret: 501, query:'t=x'"));
    EXPECT_TRUE(platform.logged("pSettings->filter = 0x"));
    g_logLevel = UTIL_LOG_ERROR;
}

}  // namespace

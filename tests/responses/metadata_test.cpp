// The metadata of one file: each data set, and what may go wrong on the way to it.
#include <gtest/gtest.h>

#include <filesystem>

#include "libvxMediaRTOSDB/src/media_list.h"
#include "libvxMediaRTOSDB/src/media_metadata.h"
#include "libvxMediaRTOSDB/src/util_log.h"
#include "tests/responses/produced_response.h"

namespace {

using namespace scripted;

// A file of which the database tells everything.
struct File {
    uint32_t contentType;
    uint32_t highlights = 2;
    uint32_t attributes = ITEM_ATTRIBUTE_EIS | ITEM_ATTRIBUTE_AUDIO_WIND | ITEM_ATTRIBUTE_HDR;
    Bytes gumi = Bytes(16, 0xAB);
    uint32_t command = 0xFFFFFFFF;  // that the database refuses
    uint32_t status = 0;            // with this status

    Exchange answer(const Bytes& request) const {
        const uint32_t asked = wordAt(request, 0);
        if (asked == command)
            return reply(responseHeader(asked, 1, status));
        const Bytes header = join({responseHeader(asked, 1)});
        const Bytes item = itemRecord(contentType, "V0010001.MP4", 5, attributes);
        switch (asked) {
            case DB_CMD_CONTENT_INFO:
                return reply(join({header, item}));
            case DB_CMD_VIDEO_SPECIFIC_INFO: {
                Bytes answer = join({header, item});
                if (isVideo(contentType)) {
                    append(answer, videoInfo(1500, highlights, 1));
                    for (uint32_t i = 0; i < highlights; i++)
                        append(answer, words({i * 1000}));
                }
                return reply(answer);
            }
            case DB_CMD_FILE_GUMI:
                return reply(join({header, item, gumi, Bytes(16, 0xCD)}));
            case DB_CMD_MORE_INFO:
                return reply(join({header, words({1920, 1080, 60000, 1001, 1, 0xFFFFFFFF, 0})}));
            default:
                return reply(header);
        }
    }
};

Produced metadataOf(const File& file, const std::string& query) {
    resetWithCard();
    platform.answer = [&](const Bytes& request) { return file.answer(request); };
    return produce(
        [&] { return generateMetadata(nullptr, (query + "&p=100VMEDI/V0010001.MP4").c_str()); });
}

TEST(Metadata, DataSets) {
    const std::string gumis = R"("gumi":"abababababababababababababababab")";
    const std::string parent = R"("pgumi":"cdcdcdcdcdcdcdcdcdcdcdcdcdcdcdcd")";
    const std::string more =
        R"("w":"1920","h":"1080","fps":"60000","fps_denom":"1001","prog":"1","subsample":"-1")";
    const uint32_t withParent = ITEM_ATTRIBUTE_PARENT_GUMI | ITEM_ATTRIBUTE_TR | (2u << 2) |
                                ITEM_ATTRIBUTE_AUDIO_AUTO | ITEM_ATTRIBUTE_MP | ITEM_ATTRIBUTE_WDR |
                                ITEM_ATTRIBUTE_RAW;
    const struct {
        const char* query;
        File file;
        int status;
        std::string body;
    } cases[] = {
        {"t=videoinfo",
         {0},
         200,
         R"({"dur":"2","c":"1","avc_profile":"9","profile":"8","tag_count":2,"tags":[0,1000],)" +
             more + "}"},
        {"t=videoinfo",
         {12, 0},
         200,
         R"({"dur":"2","c":"1","avc_profile":"9","profile":"8","tag_count":0,"tags":[],)" + more +
             "}"},
        {"t=dur", {2}, 200, R"({"dur":"2","c":"1","profile":"8"})"},
        {"t=videoinfo", {4}, 501, ""},
        {"t=dur", {7}, 501, ""},
        {"t=v4info",
         {3, 2, withParent},
         200,
         R"({"cre":"1000","s":"4294967298","us":"4","eis":"0","pta":"1","ao":"auto","tr":"1",)"
         R"("mp":"1",)" +
             gumis + "," + parent + R"(,"ls":"7","cl":"1","hc":"2","hi":[0,1000],"dur":"2",)" +
             more + "}"},
        {"t=v4info",
         {5, 0, withParent},
         200,
         R"({"cre":"1000","s":"4294967298","hc":"5","us":"4","eis":"0","wdr":"1","raw":"1",)"
         R"("tr":"1",)" +
             gumis + "," + parent + R"(,"w":"1920","h":"1080"})"},
        {"t=v4info",
         {7, 0, ITEM_ATTRIBUTE_EIS, Bytes(16, 0xFF)},
         200,
         R"({"cre":"1000","s":"4294967298","hc":"5","us":"4","eis":"1","wdr":"0","raw":"0",)"
         R"("tr":"0"})"},
        {"t=v5info",
         {1, 0, ITEM_ATTRIBUTE_AUDIO_STEREO, Bytes(16, 0)},
         200,
         R"({"cre":"1000","s":"4294967298","mahs":"100","us":"4","eis":"0","pta":"0",)"
         R"("ao":"stereo","tr":"0","mp":"0","ct":"1","rot":"90","fov":"120","ls":"7","cl":"1",)"
         R"("avc_profile":"9","profile":"8","hc":"0","hi":[],"dur":"2",)" +
             more + "}"},
        {"t=v5info",
         {4},
         200,
         R"({"cre":"1000","s":"4294967298","hc":"5","us":"4","eis":"1","hdr":"1","wdr":"0",)"
         R"("raw":"0","tr":"0","mp":"0","ct":"4","rot":"90","fov":"120",)" +
             gumis + R"(,"w":"1920","h":"1080"})"},
        {"t=upload", {4}, 200, R"({"us":"4"})"},
        {"t=upload&status=2", {4}, 200, R"({"us":"4"})"},
        // What the database refuses, and what the reply does not hold.
        {"t=upload&status=2", {4, 0, 0, {}, 9, 1}, 503, ""},
        {"t=upload", {4, 0, 0, {}, 2, 3}, 404, ""},
        {"t=v4info", {0, 0, 0, {}, 8, 5}, 500, ""},
        {"t=v5info", {0, 0, 0, {}, 4, 4}, 404, ""},
        {"t=v4info", {0xFFFFFFFF}, 404, ""},
        {"t=dur", {0, 400}, 500, ""},
        {"t=dur", {12, 400}, 500, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.query + (" of content type " + std::to_string(c.file.contentType)));
        const Produced produced = metadataOf(c.file, c.query);
        EXPECT_EQ(produced.status, c.status);
        EXPECT_EQ(produced.body, c.body);
    }
}

TEST(Metadata, ListsTheFirst99Tags) {
    const Produced produced = metadataOf({0, 120}, "t=videoinfo");
    EXPECT_NE(produced.body.find(R"("tag_count":120,"tags":[0,1000,)"), std::string::npos);
    EXPECT_NE(produced.body.find(",97000,98000],"), std::string::npos);
}

TEST(Metadata, WritesTheStatusBeforeItAsks) {
    metadataOf({4}, "t=upload&status=258");
    ASSERT_EQ(platform.requests.size(), 2u);
    EXPECT_EQ(platform.requests[0], join({words({9, 1, wordAt(platform.requests[0], 8)}),
                                          text("100VMEDIV0010001.MP4"), words({258})}));
    EXPECT_EQ(wordAt(platform.requests[1], 0), 2u);
}

// Every producer, with what does not depend on its query.
TEST(Producers, WithoutConnectionCardOrMemory) {
    const struct {
        std::function<int()> run;
        int allocations;
        int withoutCard;
        std::string failedDocument;  // with the identity of the card
        bool documentWithoutMemory;
    } producers[] = {
        {[] { return generateMetadata(nullptr, "t=upload&p=100VMEDI/V0010001.MP4"); }, 3, 404, "",
         false},
        {[] { return generateMediaList(nullptr, "f=video"); }, 3, 404,
         R"({"id":"12345","media":[]})", false},
        {[] { return generateMediaList(nullptr, "f=gumi&folder=A&files=B"); }, 3, 404,
         R"({"id":"12345","media":[]})", true},
        {[] { return dbGetPagedList(nullptr, 1, 10, 0, 0, 0, 0, nullptr); }, 1, 500,
         R"({"id":"12345","media":[]})", false},
    };
    for (const auto& producer : producers) {
        SCOPED_TRACE(&producer - producers);
        resetWithCard();
        platform.initResults = {-7};
        const Produced unconnected = produce(producer.run);
        EXPECT_EQ(unconnected.status, 500);
        EXPECT_EQ(unconnected.body, producer.failedDocument);
        EXPECT_TRUE(platform.logged("vxIpcInit fail, ret -7\n"));

        resetWithCard();  // and a database that fails every exchange
        std::filesystem::remove_all(kCardFolder);
        const Produced cardless = produce(producer.run);
        EXPECT_EQ(cardless.status, producer.withoutCard);
        std::string expected = producer.failedDocument;
        if (!expected.empty())
            expected.replace(7, 5, "0");
        EXPECT_EQ(cardless.body, expected);
        EXPECT_TRUE(platform.logged("getCardIDStr ret < 0"));

        for (int n = 0; n < producer.allocations; n++) {
            resetWithCard();
            failAllocation(n);
            const Produced produced = produce(producer.run);
            EXPECT_EQ(produced.status, 500);
            EXPECT_EQ(produced.body, producer.documentWithoutMemory ? producer.failedDocument : "");
            EXPECT_TRUE(platform.logged("failed medialist\n"));
        }
    }
}

TEST(Producers, LogTheirSettingsAndTheQueriesTheyReject) {
    resetWithCard();
    g_logLevel = UTIL_LOG_DEBUG;
    EXPECT_EQ(produce([] { return generateMediaList(nullptr, "f=x"); }).status, 501);
    EXPECT_TRUE(platform.logged("parseMediaListQuery ret: 501, query:'f=x'"));
    EXPECT_TRUE(platform.logged("pSettings->whitelistMask = 0xffffffff"));
    EXPECT_EQ(produce([] { return generateMetadata(nullptr, "t=x"); }).status, 501);
    EXPECT_TRUE(platform.logged("parseMetadataQuery ret: 501, query:'t=x'"));
    g_logLevel = UTIL_LOG_ERROR;
}

}  // namespace

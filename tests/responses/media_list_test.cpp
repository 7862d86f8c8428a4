// Both list producers on the same pages: their documents, letter for letter, and their requests.
#include "libvxMediaRTOSDB/src/media_list.h"

#include <gtest/gtest.h>

#include "tests/responses/produced_response.h"

namespace {

using namespace scripted;

constexpr uint32_t kAllOptions =
    LIST_OPTION_VIDEO_GROUPING | LIST_OPTION_INCLUDE_GUMI | LIST_OPTION_INCLUDE_MORE_INFO;

Produced mediaList(const ListDatabase& database, const std::string& query) {
    resetWithCard();
    platform.answer = [&](const Bytes& request) { return database.answer(request); };
    return produce([&] { return generateMediaList(nullptr, query.c_str()); });
}

Produced pagedList(const ListDatabase& database, int maxRequests = 100, uint32_t count = 10,
                   uint32_t queryOptions = 0, std::vector<uint32_t> parameters = {}) {
    resetWithCard();
    platform.answer = [&](const Bytes& request) { return database.answer(request); };
    return produce([&] {
        return dbGetPagedList(nullptr, maxRequests, count, 0, kAllOptions, queryOptions,
                              static_cast<int>(parameters.size()), parameters.data());
    });
}

std::string document(const std::string& groups) {
    return R"({"id":"12345","media":[)" + groups + "]}";
}

Bytes inDirectory(Bytes item, const std::string& directory) {
    std::copy(directory.begin(), directory.end(), item.begin() + 4);
    return item;
}

Bytes photo(const std::string& name) {
    return itemRecord(DB_CONTENT_TYPE_SINGLE_PHOTO, name);
}

TEST(MediaLists, WriteTheKeysOfEachKind) {
    const uint32_t attributes = ITEM_ATTRIBUTE_TR | ITEM_ATTRIBUTE_AUDIO_STEREO |
                                ITEM_ATTRIBUTE_PTA | ITEM_ATTRIBUTE_HDR | ITEM_ATTRIBUTE_RAW;
    Bytes silent = videoInfo(499);
    putWord(silent, 0, 0);
    const ListDatabase database = {{
        join({itemRecord(0, "V0010001.MP4", 2, attributes), videoInfo(1500, 2, 1),
              words({10, 0xFFFFFFFF})}),
        join({itemRecord(3, "V0010002.MP4"), silent}),
        join({itemRecord(1, "VHAA0001.MP4"), videoInfo(0)}),
        itemRecord(4, "V0010003.JPG", 1, attributes),
        join({itemRecord(5, "VPAB0004.JPG", 2), groupInfo(0, 4, 9, 2), words({0b10110100}),
              words({0b01011100})}),
        join({itemRecord(6, "V0120010.JPG"), groupInfo(0, 10, 12)}),
        join({itemRecord(8, "VX340010.JPG"), groupInfo(0, 10, 9)}),
        join({itemRecord(10, "V0340010.JPG"), groupInfo(77, 10, 12, 3), words({0x40u})}),
        itemRecord(7, "SESSION1.DAT", 3),
        itemRecord(11, "UNLISTED.DAT"),
        join({itemRecord(12, "UNLISTED.MP4"), videoInfo(1000, 1), words({5})}),
        inDirectory(itemRecord(9, "A\"\\\x01" + std::string("\0CDEF.JP", 8)),
                    std::string("90VMEDI\0", 8)),
    }};
    const auto expected = [](bool paged) {
        const std::string start = R"(,"mod":"2000","cre":"1000","us":"4","tr":")";
        const std::string size = R"(,"s":"4294967298"})";
        const std::string groupSize = R"(,"s":"8589934595"})";
        const std::string clip = paged ? "" : R"("cl":"1",)";
        const std::string noClip = paged ? "" : R"("cl":"0",)";
        const auto highlighted = [&](const std::string& counted, const std::string& listed) {
            return paged ? counted : listed;
        };
        return R"({"d":"100VMEDI","fs":[)"
               R"({"n":"V0010001.MP4")" +
               start + R"(1","ls":"7",)" + clip +
               R"("pta":"1","ao":"stereo","mp":"0","dur":"2","mahs":"100","hc":"2","hi":[10,-1])" +
               size + R"(,{"n":"V0010002.MP4")" + start + R"(0","ls":"-1",)" + noClip +
               R"("pta":"0","ao":"off","mp":"0","dur":"0","mahs":"100","hc":"0","hi":[])" + size +
               R"(,{"n":"VHAA0001.MP4")" + start + R"(0","ls":"7",)" + noClip +
               R"("pta":"0","ao":"off","mp":"0","dur":"0","mahs":"100","hc":"0","hi":[])" + size +
               R"(,{"n":"V0010003.JPG")" + start + R"(1","hc":"1","hdr":"1","wdr":"0","raw":"1")" +
               size + R"(,{"n":"VPAB0004.JPG")" + start +
               R"(0","g":"1002","b":"4","l":"9","t":"b","m":["5","8"],)" +
               highlighted(R"("ghc":"2","ghi":["4","6"])", R"("ghc":{"4":"1","6":"1"})") +
               groupSize + R"(,{"n":"V0120010.JPG")" + start +
               R"(0","g":"12","b":"10","l":"12","t":"t","m":[])" +
               highlighted(R"(,"ghc":"0","ghi":[])", "") + groupSize + R"(,{"n":"VX340010.JPG")" +
               start + R"(0","g":"34","b":"10","l":"9","t":"n","m":[])" +
               highlighted(R"(,"ghc":"0","ghi":[])", "") + groupSize + R"(,{"n":"V0340010.JPG")" +
               start + R"(0","g":"77","b":"10","l":"12","t":"c","m":["10","12"])" +
               highlighted(R"(,"ghc":"0","ghi":[])", "") + groupSize + R"(,{"n":"SESSION1.DAT")" +
               start + R"(0","hc":"3")" + size + R"(]},{"d":"90VMEDI","fs":[{"n":"A\"\\\u0001")" +
               start + R"(0","hc":"0","hdr":"0","wdr":"0","raw":"0")" + size + "]}";
    };
    EXPECT_EQ(mediaList(database, "x=1").body, document(expected(false)));
    EXPECT_EQ(pagedList(database).body, document(expected(true)));
}

TEST(MediaLists, WriteTheGumisThatThePageCarries) {
    const Bytes moreInfo(28, 1);
    const Bytes gumi(16, 0x0A);
    const ListDatabase database = {
        {join({itemRecord(4, "V0010001.JPG", 0, ITEM_ATTRIBUTE_PARENT_GUMI), gumi, Bytes(16),
               moreInfo}),
         join({itemRecord(4, "V0010002.JPG", 0, ITEM_ATTRIBUTE_TR), Bytes(16, 0xFF), moreInfo})},
        kAllOptions};
    const std::string hex = "0a0a0a0a0a0a0a0a0a0a0a0a0a0a0a0a";
    const std::string none(32, '0');
    EXPECT_EQ(mediaList(database, "fields=n,gumi,pgumi,DNE").body,
              document(R"({"d":"100VMEDI","fs":[{"n":"V0010001.JPG","gumi":")" + hex +
                       R"(","pgumi":")" + none + R"("},{"n":"V0010002.JPG","DNE":"1"}]})"));
    EXPECT_EQ(mediaList(database, "fields=gumi").body,
              document(R"({"d":"100VMEDI","fs":[{"gumi":")" + hex + R"("},{}]})"));
    const std::string keys = R"(,"mod":"2000","cre":"1000","us":"4","tr":")";
    const std::string rest = R"(,"hc":"0","hdr":"0","wdr":"0","raw":"0","s":"4294967298"})";
    EXPECT_EQ(pagedList(database).body,
              document(R"({"d":"100VMEDI","fs":[{"n":"V0010001.JPG")" + keys + R"(0","gumi":")" +
                       hex + R"(","pgumi":")" + none + '"' + rest + R"(,{"n":"V0010002.JPG")" +
                       keys + R"(1","DNE":"1")" + rest + "]}"));
}

TEST(MediaLists, GroupByDirectory) {
    const Bytes video = join({itemRecord(0, "V0010001.MP4"), videoInfo(0)});
    const ListDatabase database = {{inDirectory(video, "A\"BCDEFG"), photo("V0010001.JPG"),
                                    photo("V0010002.JPG"), inDirectory(video, "102VMEDI"),
                                    photo("V0010003.JPG")}};
    EXPECT_EQ(mediaList(database, "f=photos&fields=n,w,\"").body,
              R"({"id":"12345","unsupported_fields":"w,\"","media":[)"
              R"({"d":"100VMEDI","fs":[{"n":"V0010001.JPG"},{"n":"V0010002.JPG"}]},)"
              R"({"d":"100VMEDI","fs":[{"n":"V0010003.JPG"}]}]})");
    EXPECT_EQ(mediaList(database, "f=raw").body, document(""));
    const std::string paged = pagedList(database, 100, 10, QUERY_OPTION_RAW).body;
    EXPECT_EQ(paged, document(R"({"d":"A\"BCDEFG","fs":[]},{"d":"100VMEDI","fs":[]},)"
                              R"({"d":"102VMEDI","fs":[]},{"d":"100VMEDI","fs":[]})"));
    EXPECT_EQ(mediaList({}, "").body, document(""));
    EXPECT_EQ(pagedList({}).body, document(""));
    EXPECT_EQ(pagedList(database, 0).body, document(""));
    EXPECT_TRUE(platform.requests.empty());
}

TEST(MediaLists, FilterByKind) {
    // The kinds that the query options select: bit n for content type n.
    const std::pair<uint32_t, uint32_t> selections[] = {
        {0, 0x7FF},
        {QUERY_OPTION_VIDEO, 0xF},
        {QUERY_OPTION_PHOTO, 0x770},
        {RTOS_DB_QUERY_METADATA_SESSION_FILES, 0x80},
        {QUERY_OPTION_RAW, 0},
        {0xFFFFFB00, 0x77F}};
    for (const auto& [options, kinds] : selections) {
        for (uint32_t type = 0; type <= DB_CONTENT_TYPE_LAST; type++) {
            const Bytes extension = isVideo(type) ? videoInfo(0) : groupInfo(1, 1, 1);
            const ListDatabase database = {{join({itemRecord(type, "V0010001.XXX"), extension})}};
            const bool listed =
                pagedList(database, 1, 1, options).body.find("\"n\"") != std::string::npos;
            EXPECT_EQ(listed, kinds >> type & 1) << type << " with " << options;
        }
    }
}

TEST(MediaLists, AskPageByPage) {
    const ListDatabase database = {std::vector<Bytes>(25, photo("V0010001.JPG"))};
    mediaList(database, "f=photos");
    ASSERT_EQ(platform.requests.size(), 3u);
    const uint32_t expected[][2] = {{10, 0}, {10, 10}, {6, 20}};
    for (size_t i = 0; i < 3; i++) {
        const Bytes& request = platform.requests[i];
        EXPECT_EQ(request,
                  words({0, expected[i][0], wordAt(request, 8), expected[i][1], 0, 0x200}));
        EXPECT_EQ(wordAt(request, 8), wordAt(platform.requests[0], 8));
    }
    pagedList(database, 2, 12, 0x200, {7});
    ASSERT_EQ(platform.requests.size(), 2u);
    EXPECT_EQ(platform.requests[1],
              words({11, 12, wordAt(platform.requests[1], 8), 12, kAllOptions, 0x200, 7, 0}));
    pagedList(database, 1, 12, 0x200, {7, 8});
    EXPECT_EQ(wordAt(platform.requests[0], 28), 8u);
    pagedList(database, 9, 18, 0);
    EXPECT_EQ(platform.requests[1],
              words({0, 8, wordAt(platform.requests[1], 8), 18, kAllOptions, 0}));
}

// A database of video group members: it answers for the first ones that a request names, leaves
// out those it does not have, and cuts its reply.
struct MemberDatabase {
    std::vector<std::string> files;
    uint32_t perReply;
    uint32_t statusAfter = 99;  // exchanges that succeed
    uint32_t exchanges = 0;

    Exchange answer(const Bytes& request) {
        if (exchanges++ >= statusAfter)
            return reply(responseHeader(4, 0, 5));
        Bytes members;
        uint32_t count = 0;
        for (size_t i = 12; i < request.size() && count < perReply; i += 20) {
            const std::string name(request.begin() + static_cast<long>(i) + 8,
                                   request.begin() + static_cast<long>(i) + 20);
            if (std::find(files.begin(), files.end(), name) == files.end())
                continue;
            append(members, join({itemRecord(2, name, 1, ITEM_ATTRIBUTE_EIS),
                                  videoInfo(1000 * ++count, 1), words({count})}));
        }
        return reply(join({responseHeader(4, count), members}));
    }
};

TEST(MediaLists, ReplaceAVideoGroupByItsMembers) {
    const ListDatabase chapters = {{join({
                                        itemRecord(2, "VXMF0012.MP4"),
                                        groupInfo(12, 0, 4, 1),
                                        words({0b11101000}),
                                    }),
                                    photo("V0010001.JPG")},
                                   LIST_OPTION_VIDEO_GROUPING};
    const auto run = [&](MemberDatabase members, const std::function<int()>& producer) {
        resetWithCard();
        platform.answer = [&, members](const Bytes& request) mutable {
            return wordAt(request, 0) == 4 ? members.answer(request) : chapters.answer(request);
        };
        return produce(producer);
    };
    const auto list = [] { return generateMediaList(nullptr, "fields=n,ls,s,eis,dur,hi,cl"); };
    const auto paged = [] { return dbGetPagedList(nullptr, 9, 10, 0, 2, 0, 0, nullptr); };
    const std::vector<std::string> all = {"VXMF0012.MP4", "VX020012.MP4", "VX030012.MP4",
                                          "VX050012.MP4"};

    const auto member = [](const char* name, int n) {
        return R"({"n":")" + std::string(name) +
               R"(","ls":"7","s":"4294967298","eis":"1","dur":")" + std::to_string(n) +
               R"(","mahs":"100","hc":"1","hi":[)" + std::to_string(n) + "]},";
    };
    const std::string end = R"({"n":"V0010001.JPG","hc":"0","s":"4294967298"}]})";
    const std::string start = R"({"d":"100VMEDI","fs":[)";
    EXPECT_EQ(run({all, 2}, list).body,
              document(start + member("VXMF0012.MP4", 1) + member("VX020012.MP4", 2) +
                       member("VX030012.MP4", 1) + member("VX050012.MP4", 2) + end));
    EXPECT_EQ(platform.requests.size(), 3u);
    EXPECT_EQ(platform.requests[1].size(), 12u + 4 * 20);
    EXPECT_EQ(platform.requests[2].size(), 12u + 2 * 20);
    EXPECT_EQ(run({{all[1]}, 9}, list).body, document(start + member("VX020012.MP4", 1) + end));
    EXPECT_EQ(run({{}, 9}, list).body, document(start + end));
    EXPECT_EQ(run({all, 9, 0}, list).status, 500);
    EXPECT_EQ(run({all, 1, 1}, list).body, document(start + member("VXMF0012.MP4", 1) + end));

    EXPECT_EQ(run({{all[0]}, 9}, paged).body,
              document(start + R"({"n":"VXMF0012.MP4","mod":"2000","cre":"1000","us":"4","tr":"0",)"
                               R"("eis":"1","pta":"0","ao":"off","mp":"0","dur":"1","mahs":"100",)"
                               R"("hc":"1","hi":[1],"ls":"7","s":"4294967298"},)"
                               R"({"n":"V0010001.JPG","mod":"2000","cre":"1000","us":"4","tr":"0",)"
                               R"("hc":"0","hdr":"0","wdr":"0","raw":"0","s":"4294967298"}]})"));
}

TEST(GumiList, AsksForEachFile) {
    const auto gumiList = [](const std::string& query) {
        resetWithCard();
        platform.answer = [](const Bytes& request) {
            const std::string name(request.begin() + 20, request.end());
            if (name[0] == 'N' || name[0] == 'E')
                return reply(responseHeader(7, 1, name[0] == 'N' ? 4 : 1));
            const uint32_t parent = name[0] == 'P';
            return reply(join({responseHeader(7, 1), itemRecord(4, "V\"010001.JPG", 0, parent),
                               Bytes(16, 0x1F), Bytes(16, 0x2E)}));
        };
        return produce([&] { return generateMediaList(nullptr, query.c_str()); });
    };
    const std::string gumi = R"({"n":"V\"010001.JPG","gumi":"1f1f1f1f1f1f1f1f1f1f1f1f1f1f1f1f")";
    const std::string pgumi = R"(,"pgumi":"2e2e2e2e2e2e2e2e2e2e2e2e2e2e2e2e")";
    const struct {
        std::string query;
        int status;
        std::string groups;
        std::string message = {};
    } cases[] = {
        {"f=gumi&folder=100VMEDI&files=V,,P,N\"3456789012345,", 200,
         R"({"d":"100VMEDI","fs":[)" + gumi + "}," + gumi + pgumi +
             R"(},{"n":"N\"3456789012","DNE":"1"}]})"},
        {"f=gumi&folder=&files=&x=1", 200, R"({"d":"","fs":[]})"},
        {"f=gumi&folder=A&files=V,E,V", 503, ""},
        {"f=gumi", 400, "", "Required '&folder=' key missing, aborting\n"},
        {"f=gumi&FOLDER=A&files=V", 400, "", "Required '&folder=' key missing, aborting\n"},
        {"f=gumi&folder=%41%41%41&files=V", 400, "", "&folder= value too long (8 char max)"},
        {"f=gumi&folder=A&x=1&files=V", 400, "", "Required '&files=' key missing, aborting\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.query);
        const Produced produced = gumiList(c.query);
        EXPECT_EQ(produced.status, c.status);
        EXPECT_EQ(produced.body, document(c.groups));
        EXPECT_TRUE(c.message.empty() || platform.logged(c.message));
    }
    EXPECT_EQ(platform.requests.size(), 0u);

    testing::internal::CaptureStdout();
    EXPECT_EQ(generateMediaList(nullptr, "F=gumi&folder=A&files=V"), -1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_TRUE(platform.logged("Required 'gumi=' key missing, aborting\n"));
}

}  // namespace

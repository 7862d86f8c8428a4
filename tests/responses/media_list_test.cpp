// Both list producers on the same pages: their documents, letter for letter, and their requests.
#include <mediacheckd/vxMediaRTOSDB/media_list.h>

#include <gtest/gtest.h>

#include <cstring>

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

using Marks = std::vector<std::pair<const char*, const char*>>;

// The document of groups that are written in lines, with marks for what files share.
std::string document(std::string groups, Marks marks = {}) {
    marks.insert(marks.end(), {{"\n", ""},
                               {"<E9>", "\xE9"},
                               {"<dates>", R"(,"mod":"2000","cre":"1000","us":"4")"},
                               {"<size>", R"(,"s":"4294967298")"},
                               {"<group size>", R"(,"s":"8589934595")"}});
    for (const auto& [mark, text] : marks) {
        for (size_t at = 0; (at = groups.find(mark, at)) != std::string::npos;) {
            groups.replace(at, std::strlen(mark), text);
        }
    }
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
    Bytes silent = videoInfo(499, 0, 1);
    putWord(silent, 0, 0);
    const ListDatabase database = {{
        join({itemRecord(0, "V0010001.MP4", 2, attributes), videoInfo(1500, 2, 1),
              words({10, 0xFFFFFFFF})}),
        join({itemRecord(1, "VHAA0002.MP4"), silent}),
        itemRecord(4, "V0010003.JPG", 1, attributes),
        join({itemRecord(5, "VPAB0004.JPG", 2), groupInfo(0, 4, 9, 2), words({0b10110100}),
              words({0b01011100})}),
        join({itemRecord(6, "V0120010.JPG"), groupInfo(0, 10, 12)}),
        join({itemRecord(8, "VX340010.JPG"), groupInfo(0, 10, 9)}),
        join({itemRecord(10, "V0340010.JPG"), groupInfo(77, 10, 12, 3), words({0x40u})}),
        join({itemRecord(10, std::string("V\0AB0001.JPG", 12)), groupInfo(0, 10, 10)}),
        itemRecord(7, "SESSION1.DAT", 3),
        inDirectory(itemRecord(9, "A\"\\\x01\x1F\xE9" + std::string("\0DEF.J", 6)),
                    std::string("90VMEDI\0", 8)),
    }};
    const std::string groups = R"({"d":"100VMEDI","fs":[
{"n":"V0010001.MP4"<dates>,"tr":"1","ls":"7"<cl>,"pta":"1","ao":"stereo","mp":"0","dur":"2",
"mahs":"100","hc":"2","hi":[10,-1]<size>},
{"n":"VHAA0002.MP4"<dates>,"tr":"0","ls":"-1"<cl>,"pta":"0","ao":"off","mp":"0","dur":"0",
"mahs":"100","hc":"0","hi":[]<size>},
{"n":"V0010003.JPG"<dates>,"tr":"1","hc":"1","hdr":"1","wdr":"0","raw":"1"<size>},
{"n":"VPAB0004.JPG"<dates>,"tr":"0","g":"1002","b":"4","l":"9","t":"b","m":["5","8"]<4,6>},
{"n":"V0120010.JPG"<dates>,"tr":"0","g":"12","b":"10","l":"12","t":"t","m":[]<no>},
{"n":"VX340010.JPG"<dates>,"tr":"0","g":"34","b":"10","l":"9","t":"n","m":[]<no>},
{"n":"V0340010.JPG"<dates>,"tr":"0","g":"77","b":"10","l":"12","t":"c","m":["10","12"]<no>},
{"n":"V"<dates>,"tr":"0","g":"0","b":"10","l":"10","t":"c","m":[]<no>},
{"n":"SESSION1.DAT"<dates>,"tr":"0","hc":"3"<size>}]},
{"d":"90VMEDI","fs":[{"n":"A\"\\\u0001\u001f<E9>"<dates>,"tr":"0",
"hc":"0","hdr":"0","wdr":"0","raw":"0"<size>}]})";
    const Marks listed = {{"<cl>", R"(,"cl":"1")"},
                          {"<4,6>", R"(,"ghc":{"4":"1","6":"1"}<group size>)"},
                          {"<no>", "<group size>"}};
    const Marks paged = {{"<cl>", ""},
                         {"<4,6>", R"(,"ghc":"2","ghi":["4","6"]<group size>)"},
                         {"<no>", R"(,"ghc":"0","ghi":[]<group size>)"}};
    EXPECT_EQ(mediaList(database, "x=1").body, document(groups, listed));
    EXPECT_TRUE(platform.logged("damaged group 100VMEDI/VX340010.JPG: first_number 10, last"));
    EXPECT_EQ(pagedList(database).body, document(groups, paged));
}

TEST(MediaLists, WriteTheGumisThatThePageCarries) {
    const Bytes moreInfo(28, 1);
    const Bytes gumi(16, 0x0A);
    const ListDatabase database = {
        {join({itemRecord(4, "V0010001.JPG", 0, ITEM_ATTRIBUTE_PARENT_GUMI), gumi, Bytes(16),
               moreInfo}),
         join({itemRecord(4, "V0010002.JPG", 0, ITEM_ATTRIBUTE_TR), Bytes(16, 0xFF), moreInfo})},
        kAllOptions};
    const Marks marks = {{"<gumi>", R"("gumi":"0a0a0a0a0a0a0a0a0a0a0a0a0a0a0a0a")"},
                         {"<pgumi>", R"("pgumi":"00000000000000000000000000000000")"},
                         {"<photo>", R"(,"hc":"0","hdr":"0","wdr":"0","raw":"0"<size>)"}};
    EXPECT_EQ(mediaList(database, "fields=n,gumi,pgumi,DNE").body,
              document(R"({"d":"100VMEDI","fs":[{"n":"V0010001.JPG",<gumi>,<pgumi>},
{"n":"V0010002.JPG","DNE":"1"}]})",
                       marks));
    EXPECT_EQ(mediaList(database, "fields=gumi").body,
              document(R"({"d":"100VMEDI","fs":[{<gumi>},{}]})", marks));
    EXPECT_EQ(pagedList(database).body, document(R"({"d":"100VMEDI","fs":[
{"n":"V0010001.JPG"<dates>,"tr":"0",<gumi>,<pgumi><photo>},
{"n":"V0010002.JPG"<dates>,"tr":"1","DNE":"1"<photo>}]})",
                                                 marks));
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
        for (uint32_t type = 0; type <= DB_CONTENT_TYPE_LAST; ++type) {
            const Bytes extension = isVideo(type) ? videoInfo(0) : groupInfo(1, 1, 1);
            const ListDatabase database = {{join({itemRecord(type, "V0010001.XXX"), extension})}};
            const std::string body = pagedList(database, 1, 1, options).body;
            EXPECT_EQ(body.find("XXX") < body.size(), kinds >> type & 1) << type << " " << options;
        }
    }
}

TEST(MediaLists, AskPageByPage) {
    const ListDatabase database = {std::vector<Bytes>(25, photo("V0010001.JPG"))};
    const auto requests = [] {  // but for their tokens
        std::vector<Bytes> sent = platform.requests;
        for (Bytes& request : sent) {
            EXPECT_NE(wordAt(request, 8), 0u);
            putWord(request, 8, 0);
        }
        return sent;
    };
    mediaList(database, "f=photos");
    EXPECT_EQ(requests(),
              (std::vector{words({0, 10, 0, 0, 0, 0x200}), words({0, 10, 0, 10, 0, 0x200}),
                           words({0, 6, 0, 20, 0, 0x200})}));
    pagedList(database, 2, 12, 0x200, {7});
    EXPECT_EQ(requests(), (std::vector{words({11, 12, 0, 0, kAllOptions, 0x200, 7, 0}),
                                       words({11, 12, 0, 12, kAllOptions, 0x200, 7, 0})}));
    pagedList(database, 9, 18, 0, {7, 8});
    EXPECT_EQ(requests(), (std::vector{words({11, 18, 0, 0, kAllOptions, 0, 7, 8}),
                                       words({11, 8, 0, 18, kAllOptions, 0, 7, 8})}));
    pagedList(database, 1);
    EXPECT_EQ(requests().at(0), words({0, 10, 0, 0, kAllOptions, 0}));
}

// A database of video group members: it answers for the first ones that a request names, leaves
// out those it does not have, and cuts its reply.
struct MemberDatabase {
    std::string files;
    uint32_t perReply;
    uint32_t failing = 99;  // the exchange from which on it reports a status
    uint32_t status = 0;
    uint32_t claimed = 0;  // members that its replies count and do not hold
    uint32_t exchanges = 0;

    Exchange answer(const Bytes& request) {
        if (++exchanges >= failing) {
            return reply(responseHeader(4, 1, status));
        }
        Bytes members;
        uint32_t count = 0;
        for (size_t i = 20; i < request.size() && count < perReply; i += 20) {
            EXPECT_EQ(std::string(&request[i] - 8, &request[i]), std::string("100VM\0\0\0", 8));
            const std::string file(&request[i], &request[i] + 12);
            if (files.find(file) != std::string::npos) {
                append(members, join({itemRecord(2, file, 1, ITEM_ATTRIBUTE_EIS),
                                      videoInfo(1000 * ++count, 1), words({count})}));
            }
        }
        return reply(join({responseHeader(4, count + claimed), members}));
    }
};

TEST(MediaLists, ReplaceAVideoGroupByItsMembers) {
    ListDatabase chapters = {
        {join({itemRecord(2, "VXMF0012.MP4"), groupInfo(12, 0, 4, 1), words({0b11101000})}),
         join({itemRecord(2, "VXMF0013.MP4"), groupInfo(13, 0, 80)}), photo("V0010001.JPG")},
        LIST_OPTION_VIDEO_GROUPING};
    for (Bytes& item : chapters.items) {
        item = inDirectory(item, std::string("100VM\0XX", 8));
    }
    const auto run = [&](MemberDatabase members, const std::function<int()>& producer) {
        resetWithCard();
        platform.answer = [&, members](const Bytes& request) mutable {
            return wordAt(request, 0) == 4 ? members.answer(request) : chapters.answer(request);
        };
        return produce(producer);
    };
    const auto list = [] { return generateMediaList(nullptr, "fields=n,ls,s,eis,dur,hi,cl"); };
    const std::string all = "VXMF0012.MP4,VX020012.MP4,VX030012.MP4,VX050012.MP4";
    const auto member = [](const std::string& name, int n) {
        const std::string number = std::to_string(n);
        return R"({"n":")" + name + R"(","ls":"7"<size>,"eis":"1","dur":")" + number +
               R"(","mahs":"100","hc":"1","hi":[)" + number + "]},";
    };
    const std::string page = R"({"d":"100VM","fs":[<members>{"n":"V0010001.JPG","hc":"0"<size>}]})";
    const std::string two = member("VXMF0012.MP4", 1) + member("VX020012.MP4", 2);
    const struct {
        MemberDatabase members;
        std::vector<size_t> named;  // in each request
        std::string listed;
        int status = 200;
    } cases[] = {
        {{all, 2}, {4, 2, 74, 7}, two + member("VX030012.MP4", 1) + member("VX050012.MP4", 2)},
        {{"VX020012.MP4", 9}, {4, 2, 74, 7}, member("VX020012.MP4", 1)},
        {{"", 9}, {4, 74, 7}, ""},
        {{all, 2, 1, 3}, {4, 74, 7}, ""},
        {{all, 2, 2, 4}, {4, 2, 74, 7}, two},
        {{all, 2, 1, 5}, {4}, "", 500},  // and nothing more is asked
        {{all, 2, 2, 5}, {4, 2}, "", 500},
        {{.files = "", .perReply = 0, .claimed = 1}, {4}, "", 500},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        const Produced produced = run(c.members, list);
        EXPECT_EQ(produced.status, c.status);
        EXPECT_EQ(platform.logged("exiting"), c.status == 500);
        std::vector<size_t> named;
        for (size_t i = 1; i < platform.requests.size(); ++i) {
            named.push_back((platform.requests[i].size() - 12) / 20);
        }
        EXPECT_EQ(named, c.named);
        EXPECT_EQ(produced.body,
                  document(c.status == 200 ? page : "", {{"<members>", c.listed.c_str()}}));
    }
    const auto paged = [] { return dbGetPagedList(nullptr, 9, 10, 0, 2, 0, 0, nullptr); };
    EXPECT_EQ(
        run({"VXMF0012.MP4", 9}, paged).body,
        document(R"({"d":"100VM","fs":[{"n":"VXMF0012.MP4"<dates>,"tr":"0","eis":"1","pta":"0",
"ao":"off","mp":"0","dur":"1","mahs":"100","hc":"1","hi":[1],"ls":"7"<size>},
{"n":"V0010001.JPG"<dates>,"tr":"0","hc":"0","hdr":"0","wdr":"0","raw":"0"<size>}]})"));
}

TEST(GumiList, AsksForEachFile) {
    const auto gumiList = [](const std::string& query) {
        resetWithCard();
        platform.answer = [](const Bytes& request) {
            const std::string name(request.begin() + 20, request.end());
            if (name[0] == 'N' || name[0] == 'E') {
                return reply(responseHeader(7, 1, name[0] == 'N' ? 4 : 1));
            }
            const uint32_t parent = name[0] == 'P';
            return reply(join({responseHeader(7, 1), itemRecord(4, "V\"010001.JPG", 0, parent),
                               Bytes(16, 0x1F), Bytes(16, 0x2E)}));
        };
        return produce([&] { return generateMediaList(nullptr, query.c_str()); });
    };
    const struct {
        std::string query;
        int status;
        std::string groups;
        std::string message = {};
    } cases[] = {
        {"f=gumi&folder=100VMEDI&files=V,,P,N\"3456789012345,", 200, R"({"d":"100VMEDI","fs":[
{"n":"V\"010001.JPG","gumi":"1f1f1f1f1f1f1f1f1f1f1f1f1f1f1f1f"},
{"n":"V\"010001.JPG","gumi":"1f1f1f1f1f1f1f1f1f1f1f1f1f1f1f1f",
"pgumi":"2e2e2e2e2e2e2e2e2e2e2e2e2e2e2e2e"},{"n":"N\"3456789012","DNE":"1"}]})"},
        {"f=gumi&folder=&files=&x=1", 200, R"({"d":"","fs":[]})"},
        {"f=gumi&folder=A&files=V,E,V", 503, ""},
        {"f=gumi", 400, "", "Required '&folder=' key missing, aborting\n"},
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

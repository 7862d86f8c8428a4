// The lists when the database fails, when its pages make no sense, and when their space ends.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/responses/produced_response.h"
#include <mediacheckd/vxMediaRTOSDB/media_list.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

using namespace scripted;

int (*const list)() = [] { return generateMediaList(nullptr, "fields=n"); };
int (*const pagedList)() = [] { return dbGetPagedList(nullptr, 999, 10, 0, 0, 0, 0, nullptr); };
constexpr const char* kFailedDocument = R"({"id":"12345","media":[]})";

ListDatabase photos(size_t count) {
    return {std::vector<Bytes>(count, itemRecord(DB_CONTENT_TYPE_SINGLE_PHOTO, "V0010001.JPG"))};
}

Produced run(int (*producer)(), const std::function<Exchange(const Bytes& request)>& answer) {
    resetWithCard();
    platform.answer = answer;
    return produce(producer);
}

Produced run(int (*producer)(), const ListDatabase& database) {
    return run(producer, [&](const Bytes& request) { return database.answer(request); });
}

TEST(ListFaults, RestartTheListUpToTenTimes) {
    const Bytes page =
        join({listHeader(2), itemRecord(4, "V0010001.JPG"), itemRecord(13, "V0010002.JPG")});
    const std::string ipc = "error on IPC received, ";
    const struct {
        Exchange fault;
        std::string what;
        std::string value;
    } faults[] = {
        {sendFails(-3), ipc, "ret -3\n"},
        {receiveFails(-4), ipc, "bytesRead -4\n"},
        {reply(responseHeader(0, 0)), ipc, "bytesRead 20\n"},
        {reply(responseHeader(0, 0, 9)), ipc, "status 9\n"},
        {reply(page), "invalid content type, ", "content_type 13\n"},
        {reply({page.begin(), page.begin() + 115}), "first item of the page cut off, ",
         "bytesRead 115\n"},
        {reply(join({responseHeader(0, 0), words({0, 0, 0, 31, 1})})),
         "no items before the list's end, ", "starting_index "},
    };
    const ListDatabase database = photos(30);
    g_logLevel = UTIL_LOG_WARN;
    for (const auto& producer : {list, pagedList}) {
        const std::string whole = run(producer, database).body;
        for (const auto& c : faults) {
            for (int i = 0; i < 6; ++i) {
                const int failing = 1 + i / 2;    // the exchange that fails
                const bool lasting = i % 2 != 0;  // so do all that follow it
                SCOPED_TRACE(c.what + c.value + " at exchange " + std::to_string(failing));
                int exchange = 0;
                const Produced produced = run(producer, [&](const Bytes& request) {
                    const bool fails = ++exchange == failing || (lasting && exchange > failing);
                    return fails ? c.fault : database.answer(request);
                });
                EXPECT_EQ(produced.status, lasting ? 500 : 200);
                EXPECT_EQ(produced.body, lasting ? kFailedDocument : whole);
                EXPECT_EQ(platform.pauses, std::vector<unsigned>(lasting ? 10 : 1, 100000));
                EXPECT_TRUE(platform.logged(c.what + "retrying, " + c.value));
                EXPECT_EQ(platform.logged(c.what + "exiting, " + c.value), lasting);
                EXPECT_EQ(exchange, failing + (lasting ? 10 : 3));
            }
        }
    }
    g_logLevel = UTIL_LOG_ERROR;

    int exchange = 0;  // A list that goes on in between has no more retries than another.
    const Produced halting = run(list, [&](const Bytes& request) {
        return ++exchange % 2 == 0 ? sendFails() : database.answer(request);
    });
    EXPECT_EQ(halting.status, 500);
    EXPECT_EQ(exchange, 22);
}

TEST(ListFaults, AnItemCutShortStartsTheNextPage) {
    ListDatabase database = photos(7);
    const std::string whole = run(list, database).body;
    database.messageSize = 40 + 3 * 76 - 1;  // two items and a part
    EXPECT_EQ(run(list, database).body, whole);
    EXPECT_EQ(platform.requests.size(), 4u);
}

TEST(ListFaults, ADatabaseMayGrow) {
    for (const auto& producer : {list, pagedList}) {
        const auto grows = [](const Bytes& request) {
            return photos(platform.requests.size() == 1 ? 12 : 30).answer(request);
        };
        EXPECT_EQ(run(producer, grows).status, 200);
        EXPECT_EQ(wordAt(platform.requests[1], 4), 3u);
        EXPECT_EQ(wordAt(platform.requests[2], 4), producer == list ? 3u : 10u);
    }
}

TEST(ListFaults, HeadersThatContradictThePage) {
    Bytes page = join({words({0, 0, 12, 1, 77}), words({0, 0, 0, 8, 1})});
    for (int i = 0; i < 12; ++i) {
        append(page, itemRecord(4, "V0010001.JPG"));
    }
    g_logLevel = UTIL_LOG_WARN;
    const std::string body = run(list, [&](const Bytes&) { return reply(page); }).body;
    g_logLevel = UTIL_LOG_ERROR;
    EXPECT_TRUE(platform.logged("command 0 requested 10, response returned 12, setting"));
    EXPECT_TRUE(platform.logged("Tokens don't match 77 "));
    EXPECT_TRUE(platform.logged("truncating to 8 items in this page\n"));
    EXPECT_EQ(body, run(list, photos(8)).body);
}

TEST(ListFaults, NoListIsEndless) {
    ListDatabase database = photos(19);
    const auto skipsAll = [] {
        return dbGetPagedList(nullptr, 99999, 19, 0, 0, QUERY_OPTION_VIDEO, 0, nullptr);
    };
    size_t requests = 0;
    const Produced produced = run(skipsAll, [&](Bytes request) {
        putWord(request, 12, 0);
        Exchange page = database.answer(request);
        putWord(page.replies[0], 32, 0xFFFFFFFF);
        platform.requests.clear();
        return requests++, page;
    });
    EXPECT_EQ(produced.status, 500);
    EXPECT_EQ(requests, 13798u);  // for 2^18 items
    EXPECT_TRUE(platform.logged("no end after 262144 of -1 items, exiting\n"));

    // What ends a list that goes on is no fault of its last page.
    const auto onePage = [] { return dbGetPagedList(nullptr, 1, 15, 0, 0, 0, 0, nullptr); };
    const Bytes empty = join({responseHeader(0, 0), words({0, 0, 0, 5, 1})});
    EXPECT_EQ(run(onePage, [&](const Bytes&) { return reply(empty); }).status, 200);
    EXPECT_EQ(platform.requests.size(), 1u);

    const auto asksForNone = [] { return dbGetPagedList(nullptr, 9, 0, 0, 0, 0, 0, nullptr); };
    EXPECT_EQ(run(asksForNone, database).status, 200);
    EXPECT_EQ(platform.requests.size(), 1u);
}

TEST(ListFaults, ADamagedGroupIsListedWithoutMembers) {
    const Bytes photo = itemRecord(4, "V0010001.JPG");
    const Bytes masks = Bytes(1252, 0xFF);
    const struct {
        const char* log;
        Bytes group;
        bool video = false;
    } cases[] = {
        {"first_number 9, last_number 3\n", groupInfo(7, 9, 3, 1)},
        {"first_number 9, last_number 3\n", groupInfo(7, 9, 3, 1), true},
        {"first_number 1, last_number 10001\n", groupInfo(7, 1, 10001, 1)},
        {"first_number 1, last_number 9999\n", join({groupInfo(7, 1, 9999, 1), masks, masks})},
    };
    for (const auto& c : cases) {
        for (const bool first : {false, true}) {
            SCOPED_TRACE(std::to_string(&c - cases) + (first ? " first" : ""));
            const Bytes group = join({itemRecord(c.video ? 1 : 5, "V0070009.JPG", 1), c.group});
            ListDatabase database = {{group, photo, photo}, LIST_OPTION_VIDEO_GROUPING};
            if (!first) {
                std::swap(database.items[0], database.items[1]);
            }
            const auto missing = [] { return generateMediaList(nullptr, "fields=n,m"); };
            const auto listed = run(missing, database);
            EXPECT_EQ(listed.status, 200);
            EXPECT_EQ(listed.body.find("V0070009") < listed.body.size(), !c.video);
            EXPECT_EQ(listed.body.find("\"m\":[\""), std::string::npos);
            EXPECT_NE(listed.body.rfind("V0010001"), listed.body.find("V0010001"));
            EXPECT_TRUE(
                platform.logged(std::string("damaged group 100VMEDI/V0070009.JPG: ") + c.log));
            EXPECT_TRUE(platform.pauses.empty());
            EXPECT_EQ(wordAt(platform.requests.back(), 12), first ? 1u : 2u);
        }
    }
}

TEST(ListFaults, ATextThatIsTooLongFailsTheList) {
    Bytes video = join({itemRecord(0, "V0010001.MP4", 0), videoInfo(0, 150)});
    for (int i = 0; i < 150; ++i) {
        append(video, words({0x80000000}));  // 12 characters each
    }
    const ListDatabase videos = {{video, video, video}};
    const Produced produced = run([] { return generateMediaList(nullptr, "x=1"); }, videos);
    EXPECT_EQ(produced.status, 500);
    EXPECT_EQ(produced.body, kFailedDocument);
    EXPECT_TRUE(platform.logged(" > 1536, entry buff exceeded, item_keys.cpp:"));
    EXPECT_EQ(run(pagedList, videos).status, 200);

    ListDatabase database = photos(9000);  // the last of three groups does not fit into the page
    for (size_t i = 0; i < 9000; ++i) {
        database.items[i][4] = static_cast<uint8_t>('1' + i / 3000);
    }
    EXPECT_EQ(run(list, database).status, 500);
    EXPECT_TRUE(platform.logged("exceeded buffer length for vxoutput 189"));
}

TEST(ListFaults, ThePagedListNeedsNoCard) {
    resetWithCard();
    std::filesystem::remove_all(kCardFolder);
    platform.then(photos(0).answer(words({0, 10, 0, 0, 0, 0})));
    const Produced produced = produce(pagedList);
    EXPECT_EQ(produced.status, 200);
    EXPECT_EQ(produced.body, R"({"id":"0","media":[]})");
}

// Whatever stands in a page, there is one response and it is JSON: produce checks that.
TEST(ListFaults, AnyWordOfAPageMayBeWrong) {
    const Bytes page =
        join({responseHeader(0, 3), words({0, 6, 0, 3, 1}), itemRecord(0, "V0010001.MP4", 1),
              Bytes(16, 1), videoInfo(0, 1), words({9}), itemRecord(5, "VPAA0001.JPG", 1),
              Bytes(16, 2), groupInfo(0, 1, 40, 3), words({0xFFFFFF0F, 0xFF, 0xF0FFFFFF, 0xFF}),
              itemRecord(2, "VXMF0001.MP4"), Bytes(16, 3), groupInfo(0, 0, 2)});
    for (size_t offset = 0; offset < page.size(); offset += 4) {
        for (const uint32_t value : {0u, 1u, wordAt(page, offset) + 1, wordAt(page, offset) - 1,
                                     0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
            SCOPED_TRACE(std::to_string(offset) + " = " + std::to_string(value));
            for (const size_t size : {page.size(), offset + 4}) {
                Bytes wrong = page;
                putWord(wrong, offset, value);
                wrong.resize(size);
                const auto answer = [&](const Bytes& request) {
                    return reply(wordAt(request, 0) == 4 ? responseHeader(4, 0) : wrong);
                };
                const int status = run(offset % 8 ? list : pagedList, answer).status;
                ASSERT_TRUE(status == 200 || status == 500);
                ASSERT_LE(platform.requests.size(), 1000u);
            }
        }
    }
}

}  // namespace

// The lists when the database fails, when its pages make no sense, and when their space ends.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "libvxMediaRTOSDB/src/media_list.h"
#include "libvxMediaRTOSDB/src/text_buffer.h"
#include "libvxMediaRTOSDB/src/util_log.h"
#include "tests/responses/produced_response.h"

namespace {

using namespace scripted;

int list() {
    return generateMediaList(nullptr, "fields=n");
}

int pagedList() {
    return dbGetPagedList(nullptr, 1000000, 10, 0, 0, 0, 0, nullptr);
}

constexpr const char* kFailedDocument = R"({"id":"12345","media":[]})";

ListDatabase photos(size_t count) {
    return {std::vector<Bytes>(count, itemRecord(DB_CONTENT_TYPE_SINGLE_PHOTO, "V0010001.JPG"))};
}

Bytes invalidContentType() {
    return join({responseHeader(0, 2), words({0, 0, 0, 30, 1}), itemRecord(4, "V0010001.JPG"),
                 itemRecord(13, "V0010002.JPG")});
}

Bytes itemCutShort() {
    Bytes page = join({responseHeader(0, 1), words({0, 0, 0, 30, 1}), itemRecord(4, "V001.JPG")});
    page.pop_back();
    return page;
}

TEST(ListFaults, RestartTheListUpToTenTimes) {
    const struct {
        Exchange fault;
        std::string reported;
    } faults[] = {
        {sendFails(-3), "ret -3\n"},
        {receiveFails(-4), "bytesRead -4\n"},
        {reply(responseHeader(0, 0, 9)), "bytesRead 20\n"},
        {reply(join({responseHeader(0, 0, 9), words({0, 0, 0, 30, 1})})), "status 9\n"},
        {reply({}), "bytesRead 0\n"},
        {reply(invalidContentType()), "bytesRead 192\n"},
        {reply(itemCutShort()), "bytesRead 111\n"},
    };
    const ListDatabase database = photos(30);
    resetWithCard();
    platform.answer = [&](const Bytes& request) { return database.answer(request); };
    const std::string whole[] = {produce(list).body, produce(pagedList).body};
    g_logLevel = UTIL_LOG_WARN;
    for (const auto& c : faults) {
        for (size_t producer = 0; producer < 2; producer++) {
            const auto run = producer == 0 ? list : pagedList;
            for (int failing = 1; failing <= 3; failing++) {  // the one exchange that fails
                SCOPED_TRACE(c.reported + " at exchange " + std::to_string(failing));
                resetWithCard();
                int exchange = 0;
                platform.answer = [&](const Bytes& request) {
                    return ++exchange == failing ? c.fault : database.answer(request);
                };
                EXPECT_EQ(produce(run).body, whole[producer]);
                EXPECT_EQ(platform.pauses, std::vector<unsigned>{100000});
                EXPECT_TRUE(platform.logged("error on IPC received, retrying, " + c.reported));
                EXPECT_EQ(exchange, failing + 3);

                resetWithCard();  // and the first one from which all fail
                exchange = 0;
                platform.answer = [&](const Bytes& request) {
                    return ++exchange >= failing ? c.fault : database.answer(request);
                };
                const Produced failed = produce(run);
                EXPECT_EQ(failed.status, 500);
                EXPECT_EQ(failed.body, kFailedDocument);
                EXPECT_EQ(platform.pauses.size(), 10u);
                EXPECT_TRUE(platform.logged("error on IPC received, exiting, " + c.reported));
                EXPECT_EQ(exchange, failing + 10);
            }
        }
    }
    g_logLevel = UTIL_LOG_ERROR;
}

TEST(ListFaults, RetriesCountForTheWholeList) {
    resetWithCard();
    int exchange = 0;
    platform.answer = [&](const Bytes& request) {
        return ++exchange % 2 == 0 ? sendFails() : photos(30).answer(request);
    };
    EXPECT_EQ(produce(list).status, 500);
    EXPECT_EQ(exchange, 22);
}

TEST(ListFaults, AnItemCutShortStartsTheNextPage) {
    ListDatabase database = photos(7);
    database.messageSize = 40 + 3 * 76 - 1;  // two items and a part
    resetWithCard();
    platform.answer = [&](const Bytes& request) { return database.answer(request); };
    const std::string body = produce(list).body;
    database.messageSize = kResponseBufferSize;
    EXPECT_EQ(platform.requests.size(), 4u);
    EXPECT_EQ(body, produce(list).body);
}

TEST(ListFaults, HeadersThatContradictThePage) {
    const auto page = [](uint32_t count, uint32_t total, uint32_t items, uint32_t token = 0) {
        Bytes message = join({words({0, 0, count, 1, token}), words({0, 0, 0, total, 1})});
        for (uint32_t i = 0; i < items; i++)
            append(message, itemRecord(4, "V0010001.JPG"));
        return reply(message);
    };
    const struct {
        Exchange exchange;
        size_t files;
        std::string message;
    } cases[] = {
        {page(12, 10, 12), 10, "command 0 requested 10, response returned 12, setting"},
        {page(5, 3, 5), 3, "truncating to 3 items in this page\n"},
        {page(1, 1, 1, 77), 1, "Tokens don't match 77 "},
        {page(0, 9, 0), 0, ""},  // a page without items ends the list
    };
    g_logLevel = UTIL_LOG_WARN;
    for (const auto& c : cases) {
        resetWithCard();
        platform.then(c.exchange);
        const Produced produced = produce(list);
        EXPECT_EQ(produced.status, 200);
        size_t files = 0;
        for (size_t at = 0; (at = produced.body.find("{\"n\"", at)) != std::string::npos; at++)
            files++;
        EXPECT_EQ(files, c.files);
        EXPECT_TRUE(c.message.empty() || platform.logged(c.message)) << c.message;
    }
    g_logLevel = UTIL_LOG_ERROR;
}

// Photos of one directory whose group, as "fields=n" writes it, is exactly size characters long.
std::vector<Bytes> groupOfSize(size_t size, const std::string& directory) {
    const size_t object = std::string(R"({"n":"V0010001.JPG"},)").size();
    size -= std::string(R"({"d":"100VMEDI","fs":[]})").size() - 1;
    std::vector<Bytes> items(size / object, itemRecord(4, "V0010001.JPG"));
    // Escaped quotes make up for what is left over, a character each.
    for (size_t left = size % object, i = 0; left > 0; left--, i++)
        items[i][12] = '"';
    for (Bytes& item : items)
        std::copy(directory.begin(), directory.end(), item.begin() + 4);
    return items;
}

TEST(ListLimits, HoldExactlyWhatTheyMay) {
    const auto run = [](const std::vector<size_t>& groups) {
        ListDatabase database;
        char directory[] = "100VMEDI";
        for (const size_t size : groups) {
            for (const Bytes& item : groupOfSize(size, directory))
                database.items.push_back(item);
            directory[2]++;
        }
        resetWithCard();
        platform.answer = [=](const Bytes& request) { return database.answer(request); };
        return produce(list);
    };
    const size_t document = std::string(kFailedDocument).size();
    for (const size_t size : {kDirectoryLimit - 1, kDirectoryLimit}) {
        const Produced produced = run({size});
        EXPECT_EQ(produced.status, 200);
        EXPECT_EQ(produced.body.size(), document + size);
    }
    Produced produced = run({kDirectoryLimit + 1});
    EXPECT_EQ(produced.status, 500);
    EXPECT_EQ(produced.body, kFailedDocument);
    EXPECT_TRUE(platform.logged("65537 > 65536, dir buff exceeded, "));

    const size_t third = kPageLimit - 2 - 2 * 60000;
    EXPECT_EQ(run({60000, 60000, third}).body.size(), document + kPageLimit);
    EXPECT_EQ(run({60000, 60000, third + 1}).body, kFailedDocument);
    EXPECT_TRUE(platform.logged("exceeded buffer length for vxoutput 131073, "));
}

TEST(ListLimits, AnEntryThatIsTooLongFailsTheList) {
    ListDatabase database;
    Bytes item = join({itemRecord(0, "V0010001.MP4", 0), videoInfo(0, 150)});
    for (int i = 0; i < 150; i++)
        append(item, words({0x80000000}));  // 12 characters each
    database.items.assign(3, item);
    resetWithCard();
    platform.answer = [&](const Bytes& request) { return database.answer(request); };
    const Produced produced = produce([] { return generateMediaList(nullptr, "x=1"); });
    EXPECT_EQ(produced.status, 500);
    EXPECT_EQ(produced.body, kFailedDocument);
    EXPECT_TRUE(platform.logged(" > 1536, entry buff exceeded, "));
    EXPECT_EQ(produce(pagedList).status, 200);
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
                resetWithCard();
                platform.answer = [&](const Bytes& request) {
                    return wordAt(request, 0) == 4 ? reply(responseHeader(4, 0)) : reply(wrong);
                };
                const int status = produce(offset % 8 ? list : pagedList).status;
                ASSERT_TRUE(status == 200 || status == 500);
                ASSERT_LE(platform.requests.size(), 1000u);
            }
        }
    }
}

TEST(Producers, SurviveAStandardOutputThatIsFullOrClosed) {
    for (const char* target : {"/dev/full", ""}) {
        resetWithCard();
        platform.answer = [](const Bytes& request) { return photos(300).answer(request); };
        std::fflush(stdout);
        const int saved = dup(STDOUT_FILENO);
        close(STDOUT_FILENO);
        const int opened = *target ? open(target, O_WRONLY) : -1;
        const int result = list();
        if (opened >= 0)
            close(opened);
        dup2(saved, STDOUT_FILENO);
        close(saved);
        clearerr(stdout);
        EXPECT_EQ(result, 0);
    }
}

}  // namespace

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "medialist/zep_media_list.h"
#include "tests/medialist/captured_log.h"
#include "tests/medialist/card_database.h"

namespace {

using scripted::platform;
using scripted::wordAt;
using testing::ElementsAre;
using testing::IsEmpty;

using Files = std::vector<std::string>;

constexpr uint64_t kMiB = 1 << 20;

std::vector<UploadRule> freshRules() {
    return {{.target = 1, .kind = UPLOAD_RULE_STATUS_0}, {.kind = UPLOAD_RULE_ANY}};
}

Files members(const char* prefix, int first, int last) {
    Files files;
    for (int i = first; i <= last; ++i) {
        files.push_back("/tmp/fuse_d/DCIM/100VMEDI/" + std::string(prefix) +
                        std::to_string(10000 + i).substr(1) + ".JPG");
    }
    return files;
}

// A group of three spans between other items, one of them uploaded, and a session file.
CardDatabase sampleCard() {
    CardDatabase card;
    card.items = {{0, "VXMF0001.MP4"},
                  {6, "V0010001.JPG", 1, 1, 10, 5 * kMiB},
                  {4, "VXMF0002.JPG", 0, 0, 0, 0, 0, 0, 0, 1},
                  {6, "V0010011.JPG", 1, 11, 20, 6 * kMiB},
                  {5, "V0020001.JPG", 2, 1, 3},
                  {6, "V0010021.JPG", 1, 21, 30, 7 * kMiB},
                  {8, "V0030001.JPG", 3, 1, 2}};
    card.sessionFiles = {{4, "VXMF0009.JPG"}, {7, "VS000001.DAT"}};
    return card;
}

const std::vector<Files> kSampleWalk = {{"/tmp/fuse_d/DCIM/100VMEDI/VXMF0001.MP4"},
                                        members("V001", 1, 30),
                                        members("V002", 1, 3),
                                        members("V003", 1, 2),
                                        members("VXMF", 9, 9)};

struct Pass {
    int count = 0;
    std::vector<int> faults;  // results that were neither an item nor the end
    std::vector<Files> items;
    std::vector<int32_t> codes;
};

// Counts and walks to the end, again after each fault.
Pass passOver(ZEPMediaList& list) {
    std::vector<UploadRule> rules = freshRules();
    Pass pass;
    while ((pass.count = list.getMediaCount(rules)) < 0 && pass.faults.size() < 5) {
        pass.faults.push_back(pass.count);
    }
    for (;;) {
        MediaOutput out;
        out.text1 = out.text2 = "before";
        const int result = list.getNextMedia(&out, rules);
        if (result == ZEPMediaList::kEnd || pass.faults.size() >= 5) {
            return pass;
        }
        if (result == ZEPMediaList::kItem) {
            EXPECT_EQ(out.text1 + out.text2, "");
            pass.items.push_back(out.files);
            pass.codes.push_back(out.mediaCode);
            continue;
        }
        pass.faults.push_back(result);
        if (result == ZEPMediaList::kSessionChanged) {
            pass.items.clear();
        }
    }
}

TEST(Enumeration, CountsFoldsAndWalks) {
    const CapturedLog log;
    CardDatabase card = sampleCard();
    card.serve();
    ZEPMediaList list;
    const Pass pass = passOver(list);
    EXPECT_EQ(pass.count, 5);
    EXPECT_THAT(pass.faults, IsEmpty());
    EXPECT_EQ(pass.items, kSampleWalk);
    EXPECT_THAT(pass.codes, ElementsAre(1, 3, 2, 9, 0));
    EXPECT_THAT(card.folded, ElementsAre("V0010011.JPG", "V0010021.JPG"));
    EXPECT_EQ(log.lines().front(),
              "  [TRACE]: int ZEPMediaList::getMediaCount(std::vector<UploadRule>&) Enter");
    EXPECT_TRUE(
        log.has("  [NOISE]: [ZML]: Calling dbGetZEPSessionFileList index=9, "
                "mMediaStartIndex:7"));
    MediaOutput out;
    std::vector<UploadRule> rules = freshRules();
    EXPECT_EQ(list.getNextMedia(&out, rules), ZEPMediaList::kEnd);

    // A count of the counted list folds nothing more and leaves the walk where it is.
    EXPECT_EQ(list.getMediaCount(rules), 5);
    EXPECT_EQ(card.folded.size(), 2u);
    EXPECT_EQ(list.getNextMedia(&out, rules), ZEPMediaList::kEnd);
    rules[1].kind = UPLOAD_RULE_TIME_LAPSE;
    rules[1].countMax = 10;
    EXPECT_EQ(list.getMediaCount(rules), 2);

    // The entry of the first span holds the sums; sorting does not part it from its group.
    ASSERT_EQ(list.sort(R"({"sort_rules": ["filesize_smallest_first"]})"), 0);
    EXPECT_TRUE(log.has("  [NOISE]: [ZML]: 1 y:19 d:0 t:6 c:30 s:18 h:0"));
    ASSERT_EQ(list.getNextMedia(&out, rules), ZEPMediaList::kItem);
    ASSERT_EQ(list.getNextMedia(&out, rules), ZEPMediaList::kItem);
    EXPECT_EQ(out.files.size(), 32u);
    EXPECT_EQ(list.getNextMedia(&out, rules), ZEPMediaList::kEnd);
}

TEST(Enumeration, EveryExchangeMayFailOrChangeTheSession) {
    // 1 to 6 count (two of them write a status), 7 to 16 walk (9 and 10 ask for later spans), and
    // 17 finds the second session file.
    for (int exchange = 1; exchange <= 17; ++exchange) {
        SCOPED_TRACE(exchange);
        const bool counts = exchange <= 6;
        const bool writesStatus = exchange == 2 || exchange == 3;
        const bool fetchesSpan = exchange == 9 || exchange == 10;

        const CapturedLog log;
        CardDatabase card = sampleCard();
        card.failingExchange = exchange;
        card.serve();
        ZEPMediaList failing;
        const Pass failed = passOver(failing);
        EXPECT_EQ(failed.count, 5);
        EXPECT_EQ(failed.faults, writesStatus ? std::vector<int>{}
                                 : counts     ? std::vector{-1}
                                              : std::vector<int>{ZEPMediaList::kFailed});
        EXPECT_EQ(log.has("  [ERROR]: [ZML]: countCb: Unable to set upload status."), writesStatus);
        std::vector<Files> reached = kSampleWalk;
        if (fetchesSpan) {
            reached.erase(reached.begin() + 1);  // the walk has passed the group's entry
        }
        EXPECT_EQ(failed.items, reached);
        EXPECT_EQ(platform.opened, platform.closed);

        card.failingExchange = CardDatabase::kNever;
        card.changingExchange = exchange;
        card.serve();
        ZEPMediaList changing;
        const Pass changed = passOver(changing);
        EXPECT_EQ(changed.count, 5);
        // The first reply of a count and the first of a walk set the session.
        EXPECT_EQ(changed.faults, exchange == 1 || exchange == 7 ? std::vector<int>{}
                                  : counts                       ? std::vector{-1}
                                           : std::vector<int>{ZEPMediaList::kSessionChanged});
        EXPECT_EQ(changed.items, kSampleWalk);
    }
}

TEST(Enumeration, AFailedRecountLeavesTheWalkAsItWas) {
    CardDatabase card = sampleCard();
    card.serve();
    ZEPMediaList list;
    std::vector<UploadRule> rules = freshRules();
    MediaOutput first;
    ASSERT_EQ(list.getNextMedia(&first, rules), ZEPMediaList::kItem);
    EXPECT_EQ(first.files, kSampleWalk[0]);
    card.failingExchange = platform.opened + 1;
    EXPECT_EQ(list.getMediaCount(rules), -1);
    MediaOutput second;
    ASSERT_EQ(list.getNextMedia(&second, rules), ZEPMediaList::kItem);
    EXPECT_EQ(second.files, kSampleWalk[1]);
}

TEST(Enumeration, PagesOfFifteen) {
    for (const auto& [items, starts] : {std::pair(0u, std::vector{0u, 0u}),
                                        {14u, std::vector{0u, 14u, 0u}},
                                        {15u, std::vector{0u, 15u, 0u}},
                                        {31u, std::vector{0u, 15u, 30u, 31u, 0u}}}) {
        CardDatabase card;
        card.items.assign(items, {4, "VXMF0002.JPG"});
        card.serve();
        ZEPMediaList list;
        std::vector<UploadRule> rules = freshRules();
        EXPECT_EQ(list.getMediaCount(rules), static_cast<int>(items));
        std::vector<uint32_t> asked;
        for (const auto& request : platform.requests) {
            EXPECT_EQ(wordAt(request, 4), 15u);
            asked.push_back(wordAt(request, 12));
        }
        EXPECT_EQ(asked, starts);
        MediaOutput out;
        EXPECT_EQ(list.getNextMedia(&out, rules),
                  items == 0 ? ZEPMediaList::kEnd : ZEPMediaList::kItem);
    }
}

TEST(Enumeration, ADatabaseThatShrinksOrGrowsEndsTheWalk) {
    std::vector<UploadRule> rules = freshRules();
    MediaOutput out;
    CardDatabase card = sampleCard();
    card.claimedItems = 1;
    card.serve();
    ZEPMediaList list;
    EXPECT_EQ(list.getMediaCount(rules), -1);  // a page without an item claims one
    EXPECT_LT(platform.requests.size(), 10u);

    card.claimedItems = 0;
    card.serve();
    EXPECT_EQ(list.getMediaCount(rules), 5);
    card.items[0].type = 11;  // no longer what the entry says
    card.items.resize(1);
    EXPECT_EQ(list.getNextMedia(&out, rules), ZEPMediaList::kEnd);
    EXPECT_THAT(out.files, IsEmpty());
}

TEST(Enumeration, ItemsThatTheCountDidNotSee) {
    const CapturedLog log;
    CardDatabase card;
    card.items = {{4, "VXMF0002.JPG"}, {4, "VXMF0003.JPG"}};
    card.serve();
    ZEPMediaList list;
    std::vector<UploadRule> rules = freshRules();
    ASSERT_EQ(list.getMediaCount(rules), 2);
    card.items[0] = {13, "VXMF0002.JPG"};
    MediaOutput out;
    EXPECT_EQ(list.getNextMedia(&out, rules), ZEPMediaList::kFailed);
    card.items[0] = {6, "V0040001.JPG", 4, 1, 1};  // a group that was not there at the count
    EXPECT_EQ(list.getMediaCount(rules), 1);
    EXPECT_TRUE(log.has("  [ERROR]: [ZML]: countCb: Missing group in span map: 4"));
    EXPECT_EQ(list.getNextMedia(&out, rules), ZEPMediaList::kItem);
    EXPECT_TRUE(log.has("  [ERROR]: [ZML]: itemCb: Missing group in span map: 4"));
    EXPECT_EQ(out.files, members("V004", 1, 1));

    char directory[] = "100VMEDI";
    ZEPMediaList::fileCb(&list, directory, nullptr);
    ZEPMediaList::fileCb(&list, nullptr, directory);
    EXPECT_EQ(out.files[1], "/tmp/fuse_d/DCIM/100VMEDI/");
    EXPECT_EQ(out.files[2], "/tmp/fuse_d/DCIM/");
    zep_item_s unknown{};
    unknown.content_type = 13;
    ZEPMediaList::itemCb(&list, &unknown);
    ZEPMediaList::fileCb(&list, directory, directory);
    EXPECT_EQ(out.files.size(), 3u);
    EXPECT_TRUE(log.has("[WARNING]: [ZML]: ZEPMediaList::itemCb : unknown item type: 13"));
}

TEST(UploadStatus, OnlyPathsOfTheRightFormReachTheDatabase) {
    const struct {
        const char* path;
        bool sent;
    } cases[] = {
        {"100VMEDI/VXMF0001.MP4", true},
        {"12345678/abcdefgh/jkl", true},
        {"100VMEDI0/VXMF001.MP4", false},
        {"100VMED/VXMF00001.MP4", false},
        {"100VMEDI-VXMF0001.MP4", false},
        {"/100VMEDI/VXMF0001.MP4", false},
        {"100VMEDI/VXMF0001.MP", false},
        {"/tmp/fuse_d/DCIM/100VMEDI/VXMF0001.MP4", false},
        {"", false},
    };
    for (const auto& c : cases) {
        const CapturedLog log;
        CardDatabase card;
        card.serve();
        ZEPMediaList list;
        EXPECT_EQ(list.setUploadStatus(c.path, 3), c.sent ? 0 : -1) << c.path;
        ASSERT_EQ(platform.requests.size(), c.sent ? 1u : 0u);
        EXPECT_EQ(log.lines().size(), c.sent ? 1u : 0u);
        if (c.sent) {
            const auto& request = platform.requests.front();
            EXPECT_EQ(wordAt(request, 32), 3u);
            EXPECT_EQ(std::string(request.begin() + 20, request.begin() + 32),
                      std::string(c.path + 9));
        }
        card.failingExchange = platform.opened + 1;
        EXPECT_EQ(list.setUploadStatus(c.path, 3), -1);
    }
}

TEST(MatchHistogram, TestsTheSelectedBuckets) {
    const struct {
        int mask;
        std::vector<size_t> filled;
        int result;
    } cases[] = {
        {0, {0, 1, 2, 3, 4}, 0},
        {32, {5}, 0},
        {9, {1, 2, 4, 5, 31}, 0},
        {9, {3}, 1},
        {9, {0}, 1},
        {16, {4}, 1},
        {~31, {8, 31}, 0},
        {31, {2}, 1},
        {9, {}, 0},
    };
    for (const auto& c : cases) {
        scripted::reset();
        scripted::Bytes reply(148);
        std::string dump = "\nZEPMediaList::matchHistogram() histogram dump:\n";
        for (size_t bucket : c.filled) {
            scripted::putWord(reply, 20 + 4 * bucket, 70);
        }
        for (size_t i = 0; i < 32; ++i) {
            dump +=
                " h[" + std::to_string(i) + "]=" + std::to_string(wordAt(reply, 20 + 4 * i)) + " ";
        }
        platform.then(scripted::reply(reply));
        testing::internal::CaptureStdout();
        EXPECT_EQ(ZEPMediaList().matchHistogram(c.mask), c.result) << c.mask;
        EXPECT_EQ(testing::internal::GetCapturedStdout(), dump + "\n");
    }
    scripted::reset();
    testing::internal::CaptureStdout();
    EXPECT_EQ(ZEPMediaList().matchHistogram(9), -1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

}  // namespace

#include <gmock/gmock.h>

#include "medialist/zep_media_list.h"
#include "tests/medialist/card_database.h"

namespace {

using scripted::platform;
using testing::ElementsAre;
using testing::HasSubstr;

using Files = std::vector<std::string>;
using Results = std::vector<int>;

std::vector<UploadRule> freshRules = {{1, UPLOAD_RULE_STATUS_0}, {0, UPLOAD_RULE_ANY}};

// A group of three spans between other items, one of them uploaded, and two session files.
CardDatabase sampleCard() {
    return {.items = {{0, "VXMF0001.MP4"},
                      {6, "V0010001.JPG", 1, 1, 10, 5},
                      {4, "VXMF0002.JPG", 0, 0, 0, 0, 0, 0, 0, 1},
                      {6, "V0010011.JPG", 1, 11, 20, 6},
                      {5, "V0020001.JPG", 2, 1, 3},
                      {6, "V0010021.JPG", 1, 21, 30, 7},
                      {8, "V0030001.JPG", 3, 1, 2}},
            .sessionFiles = {{4, "VXMF0009.JPG"}, {7, "VS000001.DAT"}}};
}

Files paths(const std::string& prefix, int first, int last, const char* extension = ".JPG") {
    Files files;
    for (int i = first; i <= last; ++i) {
        files.push_back("/tmp/fuse_d/DCIM/100VMEDI/" + prefix);
        files.back().append(std::to_string(10000 + i).substr(1)).append(extension);
    }
    return files;
}

const std::vector<Files> kSampleWalk = {paths("VXMF", 1, 1, ".MP4"), paths("V001", 1, 30),
                                        paths("V002", 1, 3), paths("V003", 1, 2),
                                        paths("VXMF", 9, 9)};

struct Pass {
    int count;
    Results faults;  // results that were neither an item nor the end
    std::vector<Files> items;
    Results codes;
};

// Counts and walks to the end, again after each fault.
Pass passOver(ZEPMediaList& list) {
    Pass pass{};
    while ((pass.count = list.getMediaCount(freshRules)) < 0 && pass.faults.size() < 5) {
        pass.faults.push_back(pass.count);
    }
    while (pass.faults.size() < 5) {
        MediaOutput out{{}, -1, "before", "before"};
        const int result = list.getNextMedia(&out, freshRules);
        if (result == ZEPMediaList::kEnd) {
            break;
        }
        if (result == ZEPMediaList::kItem) {
            pass.items.push_back(out.files);
            pass.codes.push_back(out.mediaCode);
            EXPECT_EQ(out.text1 + out.text2, "");
            continue;
        }
        pass.faults.push_back(result);
        pass.items.resize(result == ZEPMediaList::kSessionChanged ? 0 : pass.items.size());
    }
    return pass;
}

TEST(Enumeration, CountsFoldsAndWalks) {
    const CapturedLog log;
    CardDatabase card = sampleCard();
    card.serve();
    ZEPMediaList list;
    const Pass pass = passOver(list);
    EXPECT_EQ(pass.count, 5);
    EXPECT_EQ(pass.faults, Results{});
    EXPECT_EQ(pass.items, kSampleWalk);
    EXPECT_THAT(pass.codes, ElementsAre(1, 3, 2, 9, 0));
    EXPECT_THAT(card.folded, ElementsAre("V0010011.JPG", "V0010021.JPG"));
    const std::string lines = log.take();
    EXPECT_EQ(lines.rfind("  [TRACE]: int ZEPMediaList::getMediaCount(std::vector<UploadRule>&) "
                          "Enter\n  [NOISE]: [ZML]: Calling dbGetZEPList index=0,",
                          0),
              0u);
    EXPECT_THAT(lines, HasSubstr("SessionFileList index=9, mMediaStartIndex:7\n"));

    // A recount folds nothing more and leaves the walk where it is; so does one that fails.
    MediaOutput out;
    std::vector<UploadRule> lapses = {freshRules[0], {0, 6, "", 0, 0, 0, 0, 2, 10}};
    EXPECT_EQ(list.getMediaCount(lapses), 2);
    EXPECT_EQ(card.folded.size(), 2u);
    card.failingExchange = platform.opened + 1;
    EXPECT_EQ(list.getMediaCount(lapses), -1);
    EXPECT_EQ(list.getNextMedia(&out, lapses), ZEPMediaList::kEnd);

    // The entry of the first span holds the sums; sorting does not part it from its group.
    ASSERT_EQ(list.sort(R"({"sort_rules": ["filesize_smallest_first"]})"), 0);
    EXPECT_THAT(log.take(), HasSubstr("[ZML]: 1 y:19 d:0 t:6 c:30 s:18 h:0\n"));
    ASSERT_EQ(list.getNextMedia(&out, lapses), ZEPMediaList::kItem);
    ASSERT_EQ(list.getNextMedia(&out, lapses), ZEPMediaList::kItem);
    EXPECT_EQ(out.files.size(), 32u);
    EXPECT_EQ(list.getNextMedia(&out, lapses), ZEPMediaList::kEnd);
}

TEST(Enumeration, EveryExchangeMayFailOrChangeTheSession) {
    // 1 to 6 count, two of them by writing a status; from 7 the walk asks, twice for later spans.
    for (int exchange = 1; exchange <= 17; ++exchange) {
        SCOPED_TRACE(exchange);
        const bool counts = exchange <= 6;
        const bool writesStatus = exchange == 2 || exchange == 3;
        std::vector<Files> reached = kSampleWalk;
        if (exchange == 9 || exchange == 10) {
            reached.erase(reached.begin() + 1);  // the walk has passed the group's entry
        }
        const CapturedLog log;
        CardDatabase card = sampleCard();
        card.failingExchange = exchange;
        card.serve();
        ZEPMediaList failing;
        const Pass failed = passOver(failing);
        EXPECT_EQ(failed.count, 5);
        EXPECT_EQ(failed.faults, writesStatus ? Results{} : Results{counts ? -1 : 1});
        EXPECT_EQ(failed.items, reached);
        EXPECT_EQ(platform.opened, platform.closed);
        EXPECT_EQ(log.take().find("countCb: Unable to set upload status.") != std::string::npos,
                  writesStatus);

        card.failingExchange = 0;
        card.changingExchange = exchange;
        card.serve();
        ZEPMediaList changing;
        const Pass changed = passOver(changing);
        const bool setsSession = exchange == 1 || exchange == 7;
        EXPECT_EQ(changed.count, 5);
        EXPECT_EQ(changed.faults, setsSession ? Results{} : Results{counts ? -1 : 3});
        EXPECT_EQ(changed.items, kSampleWalk);
    }
}

TEST(Enumeration, ADatabaseThatIsNotAsItWasCounted) {
    const CapturedLog log;
    CardDatabase card = sampleCard();
    card.claimedItems = 1;  // a page without an item claims one
    card.serve();
    ZEPMediaList list;
    EXPECT_EQ(list.getMediaCount(freshRules), -1);
    EXPECT_LT(platform.requests.size(), 10u);

    card.claimedItems = 0;
    EXPECT_EQ(list.getMediaCount(freshRules), 5);
    card.items = {{6, "V0040001.JPG", 4, 1, 1}};
    EXPECT_EQ(list.getMediaCount(freshRules), 1);
    EXPECT_THAT(log.take(), HasSubstr("countCb: Missing group in span map: 4\n"));
    MediaOutput out;
    EXPECT_EQ(list.getNextMedia(&out, freshRules), ZEPMediaList::kItem);
    EXPECT_EQ(out.files, paths("V004", 1, 1));
    EXPECT_THAT(log.take(), HasSubstr("itemCb: Missing group in span map: 4\n"));

    char name[] = "100VMEDI";
    zep_item_s unknown{};
    unknown.content_type = 13;
    ZEPMediaList::fileCb(&list, name, nullptr);
    ZEPMediaList::fileCb(&list, nullptr, name);
    ZEPMediaList::itemCb(&list, &unknown);
    ZEPMediaList::fileCb(&list, name, name);
    EXPECT_THAT(out.files,
                ElementsAre(out.files[0], "/tmp/fuse_d/DCIM/100VMEDI/", "/tmp/fuse_d/DCIM/"));
    EXPECT_EQ(log.take(), "[WARNING]: [ZML]: ZEPMediaList::itemCb : unknown item type: 13\n");
}

TEST(UploadStatus, OnlyPathsOfTheRightFormReachTheDatabase) {
    for (const std::string path : {"100VMEDI/VXMF0001.MP4", "12345678/abcdefgh/jkl"}) {
        CardDatabase card;
        card.failingExchange = 2;
        card.serve();
        EXPECT_EQ(ZEPMediaList().setUploadStatus(path, 5), 0);
        EXPECT_THAT(card.folded, ElementsAre(path.substr(9)));
        EXPECT_EQ(ZEPMediaList().setUploadStatus(path, 5), -1);
    }
    for (const char* path : {"", "100VMEDI0/VXMF001.MP4", "100VMED/VXMF00001.MP4",
                             "100VMEDI-VXMF0001.MP4", "/100VMEDI/VXMF001.MP4"}) {
        const CapturedLog log;
        scripted::reset();
        EXPECT_EQ(ZEPMediaList().setUploadStatus(path, 5), -1) << path;
        EXPECT_TRUE(platform.channels.empty() && log.take().empty());
    }
}

TEST(MatchHistogram, TestsTheSelectedBuckets) {
    const struct {
        int mask, result;
        std::vector<size_t> filled;
    } cases[] = {{0, 0, {0, 1, 2, 3, 4}},
                 {32, 0, {5}},
                 {9, 0, {1, 2, 4, 5, 31}},
                 {9, 1, {3}},
                 {9, 1, {0}},
                 {16, 1, {4}},
                 {~31, 0, {8, 31}},
                 {31, 1, {2}}};
    for (const auto& c : cases) {
        scripted::Bytes reply(148);
        std::string dump = "\nZEPMediaList::matchHistogram() histogram dump:\n";
        for (size_t i = 0; i < 32; ++i) {
            const uint32_t count = std::count(c.filled.begin(), c.filled.end(), i) != 0 ? 70 : 0;
            scripted::putWord(reply, 20 + 4 * i, count);
            dump += " h[" + std::to_string(i) + "]=" + std::to_string(count) + " ";
        }
        scripted::reset();
        platform.then(scripted::reply(reply));
        testing::internal::CaptureStdout();
        EXPECT_EQ(ZEPMediaList().matchHistogram(c.mask), c.result) << c.mask;
        EXPECT_EQ(ZEPMediaList().matchHistogram(c.mask), -1);  // the script is used up
        EXPECT_EQ(testing::internal::GetCapturedStdout(), dump + "\n");
    }
}

}  // namespace

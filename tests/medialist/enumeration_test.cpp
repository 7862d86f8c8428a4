#include <gmock/gmock.h>

#include "tests/medialist/card_database.h"
#include <mediacheckd/medialist/zep_media_list.h>

namespace {

using scripted::platform;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

using Texts = std::vector<std::string>;
using Results = std::vector<int>;

// A group of three spans between other items, one of them uploaded, and two session files.
CardDatabase sampleCard() {
    return {.items = {{0, "VXMF0001.MP4"},
                      {6, "V0010001.JPG", 1, 1, 10, 5},
                      {4, "VXMF0002.JPG", 0, 0, 0, 0, 0, 1},
                      {6, "V0010011.JPG", 1, 11, 20, 6},
                      {5, "V0020001.JPG", 2, 1, 3},
                      {6, "V0010021.JPG", 1, 21, 30, 7},
                      {8, "V0030001.JPG", 3, 1, 2}},
            .sessionFiles = {{4, "VXMF0009.JPG"}, {7, "VS000001.DAT"}}};
}

const std::string kFolder = "/tmp/fuse_d/DCIM/100VMEDI/";

// Media code, first and last file, number of files.
const Texts kSampleWalk = {"1 " + kFolder + "VXMF0001.MP4 " + kFolder + "VXMF0001.MP4 1",
                           "3 " + kFolder + "V0010001.JPG " + kFolder + "V0010030.JPG 30",
                           "2 " + kFolder + "V0020001.JPG " + kFolder + "V0020003.JPG 3",
                           "9 " + kFolder + "V0030001.JPG " + kFolder + "V0030002.JPG 2",
                           "0 " + kFolder + "VXMF0009.JPG " + kFolder + "VXMF0009.JPG 1"};

struct Pass {
    Results results;  // of counting, and of the walk where it gave neither an item nor the end
    int faultAt;      // the exchange that had just been made when one of them failed
    Texts items;
};

// Counts and walks to the end, again after each fault.
Pass passOver(ZEPMediaList& list) {
    Pass pass{{list.getMediaCount(freshRules)}, 0, {}};
    if (pass.results.back() < 0) {
        pass.faultAt = platform.opened;
        pass.results.push_back(list.getMediaCount(freshRules));
    }
    for (int result = 0; result != ZEPMediaList::kEnd && pass.results.size() < 5;) {
        MediaOutput out{{}, -1, "before", "before"};
        result = list.getNextMedia(&out, freshRules);
        if (result == ZEPMediaList::kItem) {
            pass.items.push_back(std::to_string(out.mediaCode) + " " + out.files.front() + " " +
                                 out.files.back() + " " + std::to_string(out.files.size()));
            EXPECT_EQ(out.text1 + out.text2, "");
        } else if (result != ZEPMediaList::kEnd) {
            pass.results.push_back(result);
            pass.faultAt = platform.opened;
            pass.items.resize(result == ZEPMediaList::kSessionChanged ? 0 : pass.items.size());
        }
    }
    return pass;
}

TEST(Enumeration, CountsFoldsAndWalks) {
    const CapturedLog log;
    CardDatabase card = sampleCard();
    card.serve();
    ZEPMediaList list;
    EXPECT_EQ(passOver(list).items, kSampleWalk);
    EXPECT_THAT(card.folded, ElementsAre("100VMEDIV0010011.JPG", "100VMEDIV0010021.JPG"));

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
    const std::string lines = log.take();
    EXPECT_THAT(lines,
                ContainsRegex("   \\[INFO\\]: \\[ZML\\]: sort: sort took 0.[0-9][0-9] seconds\n"));
    EXPECT_THAT(lines, HasSubstr("\n  [NOISE]: [ZML]: 1 y:19 d:0 t:6 c:30 s:18 h:0\n"));
    ASSERT_EQ(list.getNextMedia(&out, lapses), ZEPMediaList::kItem);
    ASSERT_EQ(list.getNextMedia(&out, lapses), ZEPMediaList::kItem);
    EXPECT_EQ(out.files.size(), 32u);
    EXPECT_EQ(list.getNextMedia(&out, lapses), ZEPMediaList::kEnd);
}

TEST(Enumeration, TellsEveryKindByItsCode) {
    const CapturedLog log;
    Texts codes;
    for (uint32_t type = 0; type <= DB_CONTENT_TYPE_LAST; ++type) {
        CardDatabase card{.items = {{type, "VHAA0001.MP4", 1, 1, 1}}};
        card.serve();
        ZEPMediaList list;
        const Texts items = passOver(list).items;
        codes.push_back(items.empty() ? "-" : items.front().substr(0, items.front().find(' ')));
        EXPECT_THAT(log.take(), Not(HasSubstr("unknown item type")));
        zep_item_s unknown{};
        unknown.content_type = DB_CONTENT_TYPE_LAST + 1;
        ZEPMediaList::itemCb(&list, &unknown);
        EXPECT_THAT(log.take(), HasSubstr("ZEPMediaList::itemCb : unknown item type: 13\n"));
    }
    EXPECT_THAT(codes,
                ElementsAre("1", "5", "1", "4", "0", "2", "3", "-", "9", "8", "7", "-", "11"));
}

TEST(Enumeration, EveryExchangeMayFailOrChangeTheSession) {
    // 1 to 6 count, two of them by writing a status; from 7 the walk asks, twice for later spans.
    for (int exchange = 1; exchange <= 17; ++exchange) {
        SCOPED_TRACE(exchange);
        const bool writesStatus = exchange == 2 || exchange == 3;
        for (const bool changes : {false, true}) {
            const CapturedLog log;
            CardDatabase card = sampleCard();
            (changes ? card.changingExchange : card.failingExchange) = exchange;
            card.serve();
            ZEPMediaList list;
            const Pass pass = passOver(list);
            const bool harmless = changes ? exchange == 1 || exchange == 7 : writesStatus;
            const Results fault = exchange <= 6 ? Results{-1, 5} : Results{5, changes ? 3 : 1};
            Texts reached = kSampleWalk;
            if (!changes && (exchange == 9 || exchange == 10)) {
                reached.erase(reached.begin() + 1);  // the walk has passed the group's entry
            }
            EXPECT_EQ(pass.results, harmless ? Results{5} : fault);
            EXPECT_EQ(pass.faultAt, harmless ? 0 : writesStatus ? 4 : exchange);
            EXPECT_EQ(pass.items, reached);
            EXPECT_EQ(platform.opened, platform.closed);
            EXPECT_EQ(log.take().find("countCb: Unable to set upload status.") != std::string::npos,
                      writesStatus && !changes);
        }
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
    EXPECT_THAT(log.take(), HasSubstr("countPage: A page of 1 items has none.\n"));

    card.claimedItems = 0;
    EXPECT_EQ(list.getMediaCount(freshRules), 5);
    card.items = {{6, "V0040001.JPG", 4, 1, 1}};
    EXPECT_EQ(list.getMediaCount(freshRules), 1);
    EXPECT_THAT(log.take(), HasSubstr("countCb: Missing group in span map: 4\n"));
    MediaOutput out;
    EXPECT_EQ(list.getNextMedia(&out, freshRules), ZEPMediaList::kItem);
    EXPECT_THAT(out.files, ElementsAre(kFolder + "V0040001.JPG"));
    EXPECT_THAT(log.take(), HasSubstr("itemCb: Missing group in span map: 4\n"));

    list.rewind();
    card.items.clear();
    EXPECT_EQ(list.getNextMedia(&out, freshRules), ZEPMediaList::kEnd)
        << "the entry is asked for again";
    card.items = {{4, "VXMF0001.JPG"}};
    EXPECT_EQ(list.getNextMedia(&out, freshRules), ZEPMediaList::kItem);
    card.items = {{6, "V0050001.JPG", 5, 1, 2}, {6, "V0050003.JPG", 5, 3, 4}};
    ZEPMediaList spans;
    EXPECT_EQ(spans.getMediaCount(freshRules), 2);
    card.items.pop_back();
    EXPECT_EQ(spans.getNextMedia(&out, freshRules), ZEPMediaList::kItem) << "a span has gone";
    card.failingExchange = platform.opened + 1;
    EXPECT_EQ(ZEPMediaList().getNextMedia(&out, freshRules), ZEPMediaList::kFailed);
}

TEST(Enumeration, FoldsOnlySpansThatItCanTellApart) {
    const CapturedLog log;
    CardDatabase card{.items = {{6, "V0010001.JPG", ~0u, 1, 2}, {6, "V0010003.JPG", ~0u, 3, 4}}};
    card.items.resize(50, {4, "VXMF0001.JPG"});
    card.serve();
    ZEPMediaList list;
    const Pass pass = passOver(list);
    EXPECT_EQ(pass.results, Results{50});
    EXPECT_EQ(pass.items.size(), 50u);
    EXPECT_THAT(card.folded, ElementsAre());
    // What a component may do: count behind a reset, where entries and indices are apart.
    list.reset();
    zep_item_s span{};
    span.content_type = 6;
    span.dir_name = span.file_name = "";
    ZEPMediaList::countCb(&list, &span);
    ZEPMediaList::countCb(&list, &span);
    ZEPMediaList::itemCb(&list, &span);
    EXPECT_THAT(log.take(), Not(HasSubstr("Missing group")));
}

TEST(Enumeration, TellsOfMoreItemsThanAnIndexHolds) {
    const CapturedLog log;
    CardDatabase card;
    card.items.resize(ZEPMediaList::kMaxItems + 1, {4, "VXMF0001.JPG"});
    card.serve();
    ZEPMediaList list;
    EXPECT_EQ(list.getMediaCount(freshRules), static_cast<int>(ZEPMediaList::kMaxItems));
    EXPECT_THAT(log.take(), HasSubstr("More than 262144 items"));
    // No rule accepts an item: one step walks to the end.
    std::vector<UploadRule> none;
    MediaOutput out;
    card.failingExchange = platform.opened + 1;
    EXPECT_EQ(list.getMediaCount(none), -1);
    EXPECT_EQ(list.getNextMedia(&out, none), ZEPMediaList::kFailed);
}

TEST(UploadStatus, OnlyPathsOfTheRightFormReachTheDatabase) {
    const struct {
        std::string path;
        Texts written;
    } cases[] = {{"100VMEDI/VXMF0001.MP4", {"100VMEDIVXMF0001.MP4"}},
                 {"12345678/abcdefgh/jkl", {"12345678abcdefgh/jkl"}},
                 {"100VMEDI/VXMF0001.JPEG", {}},
                 {"100VMED/VXMF00001.MP4", {}}};
    for (const auto& [path, written] : cases) {
        const CapturedLog log;
        CardDatabase card;
        card.failingExchange = 2;
        card.serve();
        EXPECT_EQ(ZEPMediaList().setUploadStatus(path, 5), written.empty() ? -1 : 0) << path;
        EXPECT_EQ(ZEPMediaList().setUploadStatus(path, 5), -1);
        EXPECT_EQ(card.folded, written);
        EXPECT_EQ(platform.channels.empty(), written.empty());
        EXPECT_EQ(log.take().find("   [INFO]: [ZML]: Calling dbSetZEPUploadStatus("),
                  written.empty() ? std::string::npos : 0);
    }
}

TEST(MatchHistogram, TestsTheSelectedBuckets) {
    const struct {
        int mask, result;
        std::vector<size_t> filled;
    } cases[] = {
        {0, 0, {0, 1, 2, 3, 4}}, {9, 0, {1, 2, 4, 5, 31}}, {9, 1, {3}}, {9, 1, {0}}, {16, 1, {4}},
        {~31, 0, {5, 8, 31}}};
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

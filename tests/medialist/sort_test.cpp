#include <gtest/gtest.h>
#include <sys/time.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <random>
#include <set>

#include "medialist/stopwatch.h"
#include "medialist/zep_media_list.h"
#include "tests/medialist/captured_log.h"
#include "tests/medialist/card_database.h"

static int64_t micros = 0;

// The clock of the tests: each reading takes 3 us.
int gettimeofday(timeval* time, void*) noexcept {
    micros += 3;
    *time = {.tv_sec = static_cast<time_t>(micros / 1'000'000),
             .tv_usec = static_cast<suseconds_t>(micros % 1'000'000)};
    return 0;
}

namespace {

// An entry as sort logs it in its new order.
struct Line {
    int index, year, yday, type, count, size, highlighted;
};

std::vector<Line> sortedLines() {
    std::vector<Line> lines;
    for (const std::string& text : CapturedLog::lines) {
        Line e{};
        if (std::sscanf(text.c_str(), "  [NOISE]: [ZML]: %d y:%d d:%d t:%d c:%d s:%d h:%d",
                        &e.index, &e.year, &e.yday, &e.type, &e.count, &e.size,
                        &e.highlighted) == 7) {
            lines.push_back(e);
        }
    }
    return lines;
}

CardDatabase shuffledCard(uint32_t items) {
    std::mt19937 random(1);
    const auto below = [&](uint32_t n) { return static_cast<uint32_t>(random()) % n; };
    CardDatabase card;
    for (uint32_t i = 0; i < items; ++i) {
        const uint32_t created = 1514764800 + below(4) * 15552000 + below(86400);
        card.items.push_back(
            {below(13), "VXMF0001.MP4", i, 0, 0, below(9), below(2), created, below(2)});
    }
    return card;
}

TEST(Sort, EachRuleAndTheirOrder) {
    CardDatabase card = shuffledCard(400);
    using Key = std::function<std::vector<int>(const Line&)>;  // ascends in the wanted order
    const auto isClip = [&card](const Line& e) {
        return e.type == 0 && card.items[static_cast<size_t>(e.index)].clip != 0;
    };
    const Key bySizeWithinDay = [](const Line& e) { return std::vector{-e.year, -e.yday, e.size}; };
    const Key byHighlight = [](const Line& e) { return std::vector{-e.highlighted}; };
    const std::pair<const char*, Key> cases[] = {
        {nullptr, bySizeWithinDay},
        {R"({"sort_rules": []})", [](const Line&) { return std::vector<int>{}; }},
        {R"({"sort_rules": ["hilighted_first"]})", byHighlight},
        {R"({"sort_rules": ["hilighted_manual_first"]})", byHighlight},
        {R"({"sort_rules": ["hilighted_auto_first", "hilighted_first"]})", byHighlight},
        {R"({"SORT_RULES": ["date_by_day_newest_first", "Media_Type", "filesize_smallest_first"]})",
         bySizeWithinDay},
        {R"({"sort_rules": ["date_by_day_oldest_first", "hilighted_first"]})",
         [](const Line& e) {
             return std::vector{e.year, e.yday, -e.highlighted};
         }},
        {R"({"sort_rules": ["media_type"], "media_type_order": ["video", "VIDEO", "photo"]})",
         [&](const Line& e) {
             const bool photo = e.type == 4 || e.type == 9;
             return std::vector{e.type < 3 && !isClip(e) ? 0 : photo ? 1 : 2};
         }},
        {R"({"sort_rules": ["media_type", "media_type", "filesize_smallest_first"],
             "media_type_order": ["user_video_clip", "time_lapse", "burst", "continuous", "burst",
                                  "session", "photo", "auto_video_clip", "video"]})",
         [&](const Line& e) {
             const int places[] = {7, 7, 7, 1, 5, 2, 1, 4, 1, 5, 3, 8, 2};
             return std::vector{isClip(e) ? 0 : places[e.type], e.size};
         }},
    };
    for (const auto& [document, key] : cases) {
        SCOPED_TRACE(document != nullptr ? document : "null");
        card.serve();
        const CapturedLog log;
        ASSERT_EQ(ZEPMediaList().sort(document), 0);
        EXPECT_TRUE(log.has("   [INFO]: [ZML]: sort: sort took 0.00 seconds"));
        const std::vector<Line> lines = sortedLines();
        std::set<int> seen;
        for (size_t i = 0; i < lines.size(); ++i) {
            seen.insert(lines[i].index);
            EXPECT_TRUE(i == 0 || key(lines[i - 1]) <= key(lines[i])) << lines[i].index;
        }
        EXPECT_EQ(seen.size(), card.items.size());
    }
}

std::string times(size_t count, const std::string& text) {
    std::string result;
    while (count-- > 0) {
        result += text;
    }
    return result;
}

TEST(Sort, ABadDocumentIsNamedAndChangesNothing) {
    const std::string parse = "Unable to parse JSON: ";
    const std::string missing = "JSON is missing required sort_rules field";
    const std::string noText = "Expected type string for ";
    const std::string rules = R"({"sort_rules": ["media_type")";
    const std::pair<std::string, std::string> cases[] = {
        {"", parse},
        {R"({"sort_rules": x})", parse + "x}"},
        {times(10 << 20, "x"), parse + times(10 << 20, "x")},
        {times(100'000, "["), parse + times(99'000, "[")},
        {"[]", missing},
        {R"({"sort_rule": []})", missing},
        {R"({"sort_rules": {}})", "JSON sort_rules field is not an array"},
        {R"({"sort_rules": [1]})", noText + "sort_rules children."},
        {R"({"sort_rules": ["hilighted_first", null]})", noText + "sort_rules children."},
        {rules + ", 1]}", "JSON is missing manditory media_type_order field"},
        {rules + R"(], "media_type_order": {}})", "JSON media_type_order field is not an array"},
        {rules + R"(], "media_type_order": ["video", {}]})", noText + "media_type_order children."},
        {rules + times(400'000, R"(, "media_type")") + R"(, 1], "media_type_order": ["photo")" +
             times(600'000, R"(, "video")") + "]}",
         noText + "sort_rules children."},
    };
    CardDatabase card;
    for (uint32_t day = 20; day > 0; --day) {
        card.items.push_back({4, "VXMF0001.JPG", 0, 0, 0, 0, 0, day * 86400});
    }
    card.serve();
    ZEPMediaList list;
    ASSERT_EQ(list.sort(nullptr), 0);
    std::vector<UploadRule> any = {{1, UPLOAD_RULE_STATUS_0}, {0, UPLOAD_RULE_ANY}};
    for (const auto& [document, complaint] : cases) {
        const CapturedLog log;
        EXPECT_EQ(list.sort(document.c_str()), -1);
        EXPECT_TRUE(log.lines[0] == "  [ERROR]: create: " + complaint + "\n")
            << document.substr(0, 80) << ": " << log.lines[0].substr(0, 80);
        EXPECT_EQ(log.lines[1], "  [ERROR]: [ZML]: sort: failed to create comparison operator.\n");
        MediaOutput out;
        EXPECT_EQ(list.getNextMedia(&out, any), ZEPMediaList::kItem);  // the next one each time
    }
    EXPECT_EQ(scripted::wordAt(scripted::platform.requests.back(), 12), std::size(cases) - 1);
    card.failingExchange = scripted::platform.opened + 1;
    EXPECT_EQ(ZEPMediaList().sort(nullptr), -1);
}

TEST(Stopwatch, TakesOffTheClockAndSurvivesItsWrap) {
    micros = (int64_t{1} << 32) - 1'000'000;
    Stopwatch stopwatch;
    stopwatch.control(7);
    EXPECT_DOUBLE_EQ(stopwatch.control(Stopwatch::kOverhead), 3e-6);
    micros += 2'500'000;
    EXPECT_DOUBLE_EQ(stopwatch.control(Stopwatch::kStop), 2.5);
    stopwatch.control(Stopwatch::kStart);
    micros += 1'000'000;
    EXPECT_DOUBLE_EQ(stopwatch.control(Stopwatch::kTotal), 3.5);
    EXPECT_DOUBLE_EQ(stopwatch.control(Stopwatch::kStop | Stopwatch::kTotal), 3.500003);
    EXPECT_DOUBLE_EQ(stopwatch.control(Stopwatch::kClear | Stopwatch::kTotal), 0);
}

}  // namespace

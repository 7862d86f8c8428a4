#include <gtest/gtest.h>
#include <sys/time.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <random>
#include <set>

#include "medialist/sort_rules.h"
#include "medialist/stopwatch.h"
#include "medialist/zep_media_list.h"
#include "tests/medialist/captured_log.h"
#include "tests/medialist/card_database.h"

namespace {

int64_t micros = 0;  // what the clock shows

}  // namespace

// The clock of the tests: each reading takes 3 us.
int gettimeofday(timeval* time, void*) noexcept {
    micros += 3;
    time->tv_sec = static_cast<time_t>(micros / 1'000'000);
    time->tv_usec = static_cast<suseconds_t>(micros % 1'000'000);
    return 0;
}

namespace {

// An entry as sort logs it in its new order.
struct Line {
    int index, year, yday, type, count, size, highlighted;
};

std::vector<Line> sortedLines() {
    std::vector<Line> lines;
    for (const std::string& text : CapturedLog::lines()) {
        Line line{};
        if (std::sscanf(text.c_str(), "  [NOISE]: [ZML]: %d y:%d d:%d t:%d c:%d s:%d h:%d",
                        &line.index, &line.year, &line.yday, &line.type, &line.count, &line.size,
                        &line.highlighted) == 7) {
            lines.push_back(line);
        }
    }
    return lines;
}

CardDatabase shuffledCard(size_t items) {
    std::mt19937 random(1);
    const auto upTo = [&random](uint32_t n) { return static_cast<uint32_t>(random() % n); };
    CardDatabase card;
    for (size_t i = 0; i < items; ++i) {
        const uint32_t type = upTo(13);
        card.items.push_back({.type = type,
                              .fileName = "VXMF0001.MP4",
                              .group = static_cast<uint32_t>(i),
                              .size = uint64_t{upTo(9)} << 20,
                              .highlights = upTo(2),
                              .created = 1514764800 + upTo(4) * 15552000 + upTo(86400),
                              .clip = upTo(2)});
    }
    return card;
}

TEST(Sort, EachRuleAndTheirOrder) {
    CardDatabase card = shuffledCard(400);
    // Numbers that ascend in the wanted order.
    using Key = std::function<std::vector<int>(const Line&)>;
    const Key newestThenSmallest = [](const Line& e) {
        return std::vector{-e.year, -e.yday, e.size};
    };
    const Key videosThenPhotos = [&card](const Line& e) {
        const bool clip = e.type == 0 && card.items[static_cast<size_t>(e.index)].clip != 0;
        return std::vector{e.type < 3 && !clip ? 0 : e.type == 4 || e.type == 9 ? 1 : 2};
    };
    const Key highlighted = [](const Line& e) { return std::vector{-e.highlighted}; };
    const std::pair<const char*, Key> cases[] = {
        {nullptr, newestThenSmallest},
        {R"({"sort_rules": []})", [](const Line&) { return std::vector<int>{}; }},
        {R"({"sort_rules": ["hilighted_first"]})", highlighted},
        {R"({"sort_rules": ["hilighted_manual_first"]})", highlighted},
        {R"({"sort_rules": ["hilighted_auto_first", "hilighted_first"]})", highlighted},
        {R"({"SORT_RULES": ["date_by_day_newest_first", "Media_Type", "filesize_smallest_first"]})",
         newestThenSmallest},
        {R"({"sort_rules": ["date_by_day_oldest_first"]})",
         [](const Line& e) {
             return std::vector{e.year, e.yday};
         }},
        {R"({"sort_rules": ["filesize_smallest_first", "hilighted_first"]})",
         [](const Line& e) {
             return std::vector{e.size, -e.highlighted};
         }},
        {R"({"sort_rules": ["media_type"],
             "media_type_order": ["video", "VIDEO", "photo", "video"]})",
         videosThenPhotos},
        {R"({"sort_rules": ["media_type", "media_type", "nonsense", "date_by_day_oldest_first"],
             "media_type_order": ["user_video_clip", "time_lapse", "burst", "continuous",
                                  "session", "photo", "auto_video_clip", "video"]})",
         [&](const Line& e) {
             const int places[] = {7, 7, 7, 1, 5, 2, 1, 4, 1, 5, 3, 8, 2};
             const bool clip = e.type == 0 && card.items[static_cast<size_t>(e.index)].clip != 0;
             return std::vector{clip ? 0 : places[e.type], e.year, e.yday};
         }},
    };
    for (const auto& [document, key] : cases) {
        SCOPED_TRACE(document != nullptr ? document : "null");
        card.serve();
        const CapturedLog log;
        ZEPMediaList list;
        ASSERT_EQ(list.sort(document), 0);
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

std::string repeated(const std::string& text, size_t times) {
    std::string result;
    for (size_t i = 0; i < times; ++i) {
        result += text;
    }
    return result;
}

TEST(Sort, ABadDocumentIsNamedAndChangesNothing) {
    const std::string noText = "Expected type string for ";
    const std::pair<std::string, std::string> cases[] = {
        {"", "Unable to parse JSON: "},
        {"{\"sort_rules\": x}", "Unable to parse JSON: x}"},
        {std::string(10 << 20, 'x'), "Unable to parse JSON: " + std::string(10 << 20, 'x')},
        {"[]", "JSON is missing required sort_rules field"},
        {"7", "JSON is missing required sort_rules field"},
        {"{\"sort_rule\": []}", "JSON is missing required sort_rules field"},
        {"{\"sort_rules\": {}}", "JSON sort_rules field is not an array"},
        {"{\"sort_rules\": null}", "JSON sort_rules field is not an array"},
        {"{\"sort_rules\": [1]}", noText + "sort_rules children."},
        {"{\"sort_rules\": [\"hilighted_first\", [\"media_type\"]]}",
         noText + "sort_rules children."},
        {"{\"sort_rules\": [\"media_type\", 1]}",
         "JSON is missing manditory media_type_order field"},
        {"{\"sort_rules\": [\"media_type\"], \"media_type_order\": \"video\"}",
         "JSON media_type_order field is not an array"},
        {"{\"sort_rules\": [\"media_type\"], \"media_type_order\": [\"video\", {}]}",
         noText + "media_type_order children."},
        {"{\"sort_rules\": [" + repeated("\"media_type\",", 400'000) +
             "1], \"media_type_order\": [" + repeated("\"video\",", 600'000) + "\"photo\"]}",
         noText + "sort_rules children."},
        {"{\"sort_rules\":" + repeated("[", 900) + repeated("]", 900) + "}",
         noText + "sort_rules children."},
        {repeated("[", 100'000), "Unable to parse JSON: " + repeated("[", 100'000 - 1000)},
    };
    CardDatabase card = shuffledCard(20);
    card.serve();
    std::vector<UploadRule> rules = {{.target = 1, .kind = UPLOAD_RULE_STATUS_4},
                                     {.kind = UPLOAD_RULE_ANY}};
    for (auto& item : card.items) {
        item.type = 4;
        item.status = 4;
    }
    ZEPMediaList list;
    ASSERT_EQ(list.sort(nullptr), 0);
    for (const auto& [document, complaint] : cases) {
        const CapturedLog log;
        EXPECT_EQ(list.sort(document.c_str()), -1);
        ASSERT_EQ(log.lines().size(), 2u);
        EXPECT_TRUE(log.lines()[0] == "  [ERROR]: create: " + complaint)
            << document.substr(0, 80) << ": " << log.lines()[0].substr(0, 80);
        EXPECT_EQ(log.lines()[1], "  [ERROR]: [ZML]: sort: failed to create comparison operator.");
        MediaOutput out;
        EXPECT_EQ(list.getNextMedia(&out, rules), ZEPMediaList::kItem);
    }
    ZEPMediaList uncounted;
    card.failingExchange = scripted::platform.opened + 1;
    EXPECT_EQ(uncounted.sort(nullptr), -1);
}

TEST(Stopwatch, TakesOffTheClockAndSurvivesItsWrap) {
    micros = (int64_t{1} << 32) - 1'000'000;
    Stopwatch stopwatch;
    EXPECT_EQ(stopwatch.control(Stopwatch::kOverhead), 0);
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

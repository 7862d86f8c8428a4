#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <random>
#include <set>

#include "medialist/zep_media_list.h"
#include "tests/medialist/card_database.h"

namespace {

// An entry as sort logs it in its new order.
struct Line {
    int index, year, yday, type, count, size, highlighted;
};

std::vector<Line> entriesIn(const std::string& log) {
    std::vector<Line> lines;
    Line e{};
    for (size_t at = 0; (at = log.find("\n  [NOISE]: [ZML]: ", at)) != std::string::npos; ++at) {
        if (std::sscanf(log.c_str() + at, " [NOISE]: [ZML]: %d y:%d d:%d t:%d c:%d s:%d h:%d",
                        &e.index, &e.year, &e.yday, &e.type, &e.count, &e.size,
                        &e.highlighted) == 7) {
            lines.push_back(e);
        }
    }
    return lines;
}

CardDatabase shuffledCard() {
    std::mt19937 random(1);
    const auto below = [&](uint32_t n) { return static_cast<uint32_t>(random()) % n; };
    CardDatabase card;
    for (uint32_t i = 0; i < 400; ++i) {
        const uint32_t created = 1514764800 + below(4) * 15552000 + below(86400);
        card.items.push_back(
            {below(13), "VXMF0001.MP4", i, 0, 0, below(9), below(2), created, below(2)});
    }
    return card;
}

TEST(Sort, EachRuleAndTheirOrder) {
    CardDatabase card = shuffledCard();
    const auto isClip = [&card](const Line& e) {
        return e.type == 0 && card.items[static_cast<size_t>(e.index)].clip != 0;
    };
    using Key = std::function<std::vector<int>(const Line&)>;  // ascends in the wanted order
    const Key byDayAndSize = [](const Line& e) { return std::vector{-e.year, -e.yday, e.size}; };
    const Key byHighlight = [](const Line& e) { return std::vector{-e.highlighted}; };
    const Key byAge = [](const Line& e) { return std::vector{e.year, e.yday, -e.highlighted}; };
    const Key byVideo = [&](const Line& e) {
        return std::vector{e.type < 3 && !isClip(e) ? 0 : e.type == 4 || e.type == 9 ? 1 : 2};
    };
    const Key byClass = [&](const Line& e) {
        const int places[] = {7, 7, 7, 1, 5, 2, 1, 4, 1, 5, 3, 8, 2};
        return std::vector{isClip(e) ? 0 : places[e.type], e.size};
    };
    const std::pair<const char*, Key> cases[] = {
        {nullptr, byDayAndSize},
        {R"({"sort_rules": []})", [](const Line&) { return std::vector<int>{}; }},
        {R"({"sort_rules": ["hilighted_first"]})", byHighlight},
        {R"({"sort_rules": ["hilighted_manual_first"]})", byHighlight},
        {R"({"sort_rules": ["hilighted_auto_first", "hilighted_first"]})", byHighlight},
        {R"({"SORT_RULES": ["date_by_day_newest_first", "Media_Type", "filesize_smallest_first"]})",
         byDayAndSize},
        {R"({"sort_rules": ["date_by_day_oldest_first", "hilighted_first"]})", byAge},
        {R"({"sort_rules": ["media_type"], "media_type_order": ["video", "VIDEO", "photo"]})",
         byVideo},
        {R"({"sort_rules": ["media_type", "media_type", "filesize_smallest_first"],
             "media_type_order": ["user_video_clip", "time_lapse", "burst", "continuous", "burst",
                                  "session", "photo", "auto_video_clip", "video"]})",
         byClass}};
    for (const auto& [document, key] : cases) {
        SCOPED_TRACE(document != nullptr ? document : "null");
        card.serve();
        const CapturedLog log;
        ASSERT_EQ(ZEPMediaList().sort(document), 0);
        const std::vector<Line> lines = entriesIn(log.take());
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
    const std::string noText = "Expected type string for sort_rules children.";
    const std::string type = R"({"sort_rules": ["media_type")";
    const std::pair<std::string, std::string> cases[] = {
        {"", parse},
        {R"({"sort_rules": x})", parse + "x}"},
        {times(10 << 20, "x"), parse + times(10 << 20, "x")},
        {times(100'000, "["), parse + times(99'000, "[")},
        {"[]", missing},
        {R"({"sort_rule": []})", missing},
        {R"({"sort_rules": {}})", "JSON sort_rules field is not an array"},
        {R"({"sort_rules": ["hilighted_first", null]})", noText},
        {type + ", 1]}", "JSON is missing manditory media_type_order field"},
        {type + R"(], "media_type_order": {}})", "JSON media_type_order field is not an array"},
        {type + R"(], "media_type_order": ["video", {}]})",
         "Expected type string for media_type_order children."},
        {type + times(400'000, R"(, "media_type")") + R"(, 1], "media_type_order": ["photo")" +
             times(600'000, R"(, "video")") + "]}",
         noText}};
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
        EXPECT_TRUE(log.take() ==
                    "  [ERROR]: create: " + complaint +
                        "\n  [ERROR]: [ZML]: sort: failed to create comparison operator.\n")
            << document.substr(0, 80);
        MediaOutput out;
        EXPECT_EQ(list.getNextMedia(&out, any), ZEPMediaList::kItem);  // the next one each time
    }
    EXPECT_EQ(scripted::wordAt(scripted::platform.requests.back(), 12), std::size(cases) - 1);
    card.failingExchange = scripted::platform.opened + 1;
    EXPECT_EQ(ZEPMediaList().sort(nullptr), -1);
}

}  // namespace

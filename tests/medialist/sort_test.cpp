#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <thread>

#include "medialist/sort/sort_key.h"
#include "tests/medialist/card_database.h"
#include <mediacheckd/medialist/sort_rules.h>
#include <mediacheckd/medialist/stopwatch.h>
#include <mediacheckd/medialist/zep_media_list.h>

namespace {

std::vector<MediaEntry> shuffledEntries() {
    std::mt19937 random(1);
    const auto below = [&](uint32_t n) { return static_cast<uint32_t>(random()) % n; };
    std::vector<MediaEntry> entries;
    for (uint32_t i = 0; i < 1000; ++i) {
        zep_item_s item{};
        item.content_type = below(16);
        item.highlight = below(2);
        item.clip = below(2);
        item.timestamp = 1514764800 + below(4) * 15552000 + below(86400);
        item.size_bytes = below(9) << 20;
        entries.emplace_back(item, i);
    }
    return entries;
}

TEST(SortRules, EachRuleAndTheirOrder) {
    using Key = int (*)(const MediaEntry&);  // ascends in the wanted order
    const Key day = [](const MediaEntry& e) { return static_cast<int>(e.year() * 366 + e.yday()); };
    const Key age = [](const MediaEntry& e) {
        return -static_cast<int>(e.year() * 366 + e.yday());
    };
    const Key unmarked = [](const MediaEntry& e) { return e.highlighted() != 0 ? 0 : 1; };
    const Key size = [](const MediaEntry& e) { return static_cast<int>(e.sizeMiB()); };
    const Key place = [](const MediaEntry& e) {
        const int places[] = {7, 7, 7, 1, 5, 2, 1, 4, 1, 5, 3, 8, 2, 8, 8, 8};
        return e.type() < 3 && e.clip() != 0 ? 0 : places[e.type()];
    };
    const Key video = [](const MediaEntry& e) {
        return e.type() < 3 && e.clip() == 0 ? 0 : e.type() == 4 || e.type() == 9 ? 1 : 2;
    };
    const struct {
        const char* document;
        std::vector<Key> keys;
    } cases[] = {
        {nullptr, {age, size}},
        {R"({"sort_rules": []})", {}},
        {R"({"sort_rules": ["hilighted_manual_first"]})", {unmarked}},
        {R"({"sort_rules": ["hilighted_auto_first", "hilighted_first"]})", {unmarked}},
        {R"({"SORT_RULES": ["date_by_day_newest_first", "Media_Type", "filesize_smallest_first"]})",
         {age, size}},
        {R"({"sort_rules": ["date_by_day_oldest_first", "hilighted_first"]})", {day, unmarked}},
        {R"({"sort_rules": ["media_type"], "media_type_order": ["video", "VIDEO", "photo"]})",
         {video}},
        {R"({"sort_rules": ["media_type", "media_type", "filesize_smallest_first"],
             "media_type_order": ["user_video_clip", "time_lapse", "burst", "continuous", "burst",
                                  "session", "photo", "auto_video_clip", "video"]})",
         {place, size}}};
    const std::vector<MediaEntry> entries = shuffledEntries();
    for (const auto& [document, keys] : cases) {
        const std::unique_ptr<Comparinator> order(create(document));
        for (size_t i = 1; i < entries.size(); ++i) {
            int wanted = 0;
            for (size_t k = 0; k < keys.size() && wanted == 0; ++k) {
                wanted = keys[k](entries[i]) - keys[k](entries[i - 1]);
            }
            const int result = order->compare(&entries[i - 1], &entries[i]);
            EXPECT_EQ(std::clamp(result, -1, 1), std::clamp(wanted, -1, 1)) << document;
        }
    }
}

// Orders made at random: the keys and the comparators tell the same, and sorting loses no entry.
TEST(SortKey, SortsAsTheComparatorsDo) {
    std::mt19937 random(1);
    const auto draw = [&](std::vector<std::string> names) {
        std::ranges::shuffle(names, random);
        names.resize(random() % (names.size() + 1));
        std::string list;
        for (const std::string& name : names) {
            list += (list.empty() ? "\"" : ", \"") + name + "\"";
        }
        return "[" + list + "]";
    };
    const auto byIndex = [](auto& a, auto& b) { return a.index() < b.index(); };
    const std::vector<MediaEntry> entries = shuffledEntries();
    for (int round = 0; round < 100; ++round) {
        const std::string document =
            R"({"sort_rules": )" +
            draw({"hilighted_first", "date_by_day_newest_first", "date_by_day_oldest_first",
                  "filesize_smallest_first", "media_type", "hilighted_first", "unknown"}) +
            R"(, "media_type_order": )" +
            draw({"photo", "burst", "time_lapse", "video", "user_video_clip", "session", "video"}) +
            "}";
        const std::unique_ptr<Comparinator> order(create(document.c_str()));
        std::vector<MediaEntry> sorted = entries;
        ASSERT_TRUE(sortByKeys(dynamic_cast<CompoundCompare&>(*order), sorted));
        EXPECT_TRUE(std::ranges::is_sorted(sorted, [&](auto& a, auto& b) {
            return order->compare(&a, &b) > 0;
        })) << document;
        std::ranges::sort(sorted, byIndex);
        EXPECT_EQ(std::memcmp(sorted.data(), entries.data(), 13 * entries.size()), 0);
    }
}

TEST(Sort, ABadDocumentIsNamedAndChangesNothing) {
    const std::string parse = "Unable to parse JSON: ";
    const std::string missing = "JSON is missing required sort_rules field";
    const std::string noText = "Expected type string for sort_rules children.";
    const std::string type = R"({"sort_rules": ["media_type")";
    std::string many;
    for (int i = 0; i < 400'000; ++i) {
        many += R"(, "media_type")";
    }
    const std::pair<std::string, std::string> cases[] = {
        {"", parse},
        {R"({"sort_rules": x})", parse + "x}"},
        {std::string(10 << 20, 'x'), parse + std::string(10 << 20, 'x')},
        {std::string(100'000, '['), parse + std::string(99'000, '[')},
        {"[]", missing},
        {R"({"sort_rule": []})", missing},
        {R"({"sort_rules": {}})", "JSON sort_rules field is not an array"},
        {R"({"sort_rules": ["hilighted_first", null]})", noText},
        {type + ", 1]}", "JSON is missing manditory media_type_order field"},
        {type + R"(], "media_type_order": {}})", "JSON media_type_order field is not an array"},
        {type + R"(], "media_type_order": ["video", {}]})",
         "Expected type string for media_type_order children."},
        {type + many + R"(, 1], "media_type_order": ["photo")" + many + "]}", noText}};
    CardDatabase card;
    for (uint32_t day = 1; day <= 20; ++day) {
        card.items.push_back({4, "VXMF0001.JPG", 0, 0, 0, 0, day * 86400});
    }
    card.serve();
    ZEPMediaList list;
    ZEPMediaList::kDefaultUploadRules = {{.kind = UPLOAD_RULE_NONE}};  // the list does not read it
    ASSERT_EQ(list.sort(nullptr), 0);
    ZEPMediaList::kDefaultUploadRules.clear();
    for (const auto& [document, complaint] : cases) {
        const CapturedLog log;
        EXPECT_EQ(list.sort(document.c_str()), -1);
        EXPECT_TRUE(log.take() ==
                    "  [ERROR]: create: " + complaint +
                        "\n  [ERROR]: [ZML]: sort: failed to create comparison operator.\n")
            << document.substr(0, 80);
        MediaOutput out;
        EXPECT_EQ(list.getNextMedia(&out, freshRules), ZEPMediaList::kItem);  // the day before
    }
    EXPECT_EQ(scripted::wordAt(scripted::platform.requests.back(), 12), 20 - std::size(cases));
    card.failingExchange = scripted::platform.opened + 1;
    EXPECT_EQ(ZEPMediaList().sort(nullptr), -1);
}

TEST(Stopwatch, AddsUpWhatItMeasures) {
    Stopwatch watch;
    double total = watch.control(Stopwatch::kCalibrate | Stopwatch::kClear);
    for (int lap = 0; lap < 2; ++lap) {
        watch.control(Stopwatch::kStart);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        EXPECT_GT(watch.control(Stopwatch::kTotal), total);
        total += watch.control(Stopwatch::kStop);
        EXPECT_DOUBLE_EQ(watch.control(Stopwatch::kTotal), total);
    }
    EXPECT_EQ(watch.control(Stopwatch::kClear | Stopwatch::kTotal), 0);
}

}  // namespace

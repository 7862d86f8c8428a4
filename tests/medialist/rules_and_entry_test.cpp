#include <gtest/gtest.h>

#include <cstring>
#include <tuple>

#include "medialist/media_entry.h"
#include "medialist/zep_media_list.h"

namespace {

constexpr uint32_t kMax = 0xFFFFFFFF;

constexpr uint32_t types(std::initializer_list<unsigned> contentTypes) {
    uint32_t mask = 0;
    for (unsigned type : contentTypes) {
        mask |= 1u << type;
    }
    return mask;
}

constexpr uint32_t kVideos = types({0, 1, 2});
constexpr uint32_t kAll = types({0, 1, 2, 3, 4, 5, 6, 8, 9, 10, 12, 13, 14});

// The content types, as a mask, of which a rule for status 0 and the given one accept an item.
uint32_t accepted(const UploadRule& rule, zep_item_s item) {
    std::vector<UploadRule> rules = {rule, {.target = 1, .kind = UPLOAD_RULE_STATUS_0}};
    uint32_t mask = 0;
    for (item.content_type = 0; item.content_type < 15; ++item.content_type) {
        if (ZEPMediaList().matchRules(&item, rules) == 1) {
            mask |= 1u << item.content_type;
        }
    }
    return mask;
}

TEST(Rules, AConditionAcceptsItsTypesWithinItsRanges) {
    const struct {
        uint32_t kind;
        uint32_t within, scoreOff, durationOff, countOff;
    } cases[] = {
        {0, kAll, kAll, kAll, kAll},
        {1, types({4, 9}), 0, types({4, 9}), types({4, 9})},
        {2, kVideos, 0, 0, kVideos},
        {3, kVideos, 0, kVideos, kVideos},
        {4, kVideos, 0, kVideos, kVideos},
        {5, 0, 0, 0, 0},
        {6, types({3, 6, 8}), types({3, 6, 8}), types({6, 8}), types({3})},
        {7, types({5, 12}), types({5, 12}), types({5, 12}), types({5, 12})},
        {8, types({10}), types({10}), types({10}), 0},
        {9, 0, 0, 0, 0},
        {11, 0, 0, 0, 0},
        {kMax, 0, 0, 0, 0},
    };
    zep_item_s typical{};
    typical.score = 50;
    typical.duration_s = 15;
    typical.first_number = 1;
    typical.last_number = 4;
    typical.clip = 1;
    for (const auto& c : cases) {
        const UploadRule rule{.kind = c.kind,
                              .scoreMin = 40,
                              .scoreMax = 60,
                              .durationMin = 10,
                              .durationMax = 20,
                              .countMin = 3,
                              .countMax = 5};
        for (const auto& [field, low, high, off] :
             {std::tuple(&zep_item_s::score, 40u, 60u, c.scoreOff),
              std::tuple(&zep_item_s::duration_s, 10u, 20u, c.durationOff),
              std::tuple(&zep_item_s::last_number, 3u, 5u, c.countOff)}) {
            for (const auto& [value, expected] :
                 {std::pair(low, c.within), {high, c.within}, {low - 1, off}, {high + 1, off}}) {
                zep_item_s item = typical;
                item.*field = value;
                EXPECT_EQ(accepted(rule, item), expected) << c.kind << " with " << value;
            }
        }
    }
}

TEST(Rules, ClipsAndHighlights) {
    zep_item_s plain{};
    zep_item_s highlighted{};
    highlighted.highlight = 2;
    zep_item_s clip{};
    clip.clip = 1;
    const UploadRule best{.scoreMin = 100, .scoreMax = 100};
    const auto of = [&](uint32_t kind) {
        UploadRule rule = best;
        rule.kind = kind;
        rule.durationMax = kMax;
        return rule;
    };
    EXPECT_EQ(accepted(of(1), highlighted), types({4, 9}));
    EXPECT_EQ(accepted(of(2), highlighted), kVideos);
    EXPECT_EQ(accepted(of(10), highlighted), kAll);
    EXPECT_EQ(accepted(of(10), plain), 0u);
    EXPECT_EQ(accepted({.kind = 3}, plain), 0u);
    EXPECT_EQ(accepted({.kind = 4}, clip), kVideos);
    // A file count is taken modulo 2 to the 32nd, as the database's numbers are.
    plain.first_number = 5;
    plain.last_number = 3;
    EXPECT_EQ(accepted({.kind = 8, .countMin = kMax, .countMax = kMax}, plain), types({10}));
}

TEST(Rules, ATargetAndAConditionInAnyOrder) {
    const UploadRule any{.kind = UPLOAD_RULE_ANY};
    const auto target = [](uint32_t kind) { return UploadRule{.target = 1, .kind = kind}; };
    const struct {
        std::vector<UploadRule> rules;
        uint32_t status;
        int result;
    } cases[] = {
        {{}, 0, 0},
        {{any}, 0, 0},
        {{target(11)}, 0, 0},
        {{target(11), any}, 0, 1},
        {{any, target(11)}, 0, 1},
        {{any, target(11)}, 1, 0},
        {{target(12), any, target(15)}, 4, 1},
        {{target(15), any}, 4, 1},
        {{target(0), any}, 0, 0},
        {{target(0), any}, kMax - 10, 0},
        {{target(16), any}, 5, 0},
        {{target(11), {.kind = 11}}, 0, 0},
    };
    for (const auto& c : cases) {
        zep_item_s item{};
        item.upload_status = c.status;
        std::vector<UploadRule> rules = c.rules;
        EXPECT_EQ(ZEPMediaList().matchRules(&item, rules), c.result) << &c - cases;
    }
}

uint64_t bitsOf(const MediaEntry& entry, unsigned first, unsigned width) {
    uint8_t bytes[13];
    std::memcpy(bytes, &entry, sizeof bytes);
    uint64_t value = 0;
    for (unsigned i = 0; i < width; ++i) {
        value |= static_cast<uint64_t>(bytes[(first + i) / 8] >> (first + i) % 8 & 1) << i;
    }
    return value;
}

TEST(Entry, EveryFieldHasItsBits) {
    zep_item_s item{};
    item.content_type = 0xA;
    item.highlight = 256;
    item.clip = 1;
    item.timestamp = 1735603200;  // 2024-12-31, the last day of a leap year
    item.size_bytes = uint64_t{0x2AAAAA} << 20 | 0xFFFFF;
    item.duration_s = 0x1555555;
    item.last_number = 0x2AAA9;
    const auto check = [](const MediaEntry& entry, const uint64_t(&expected)[10]) {
        const unsigned widths[] = {18, 4, 1, 1, 1, 5, 9, 22, 25, 18};
        const uint64_t read[] = {
            entry.index(), entry.type(), entry.highlighted(), entry.clip(),      entry.merged(),
            entry.year(),  entry.yday(), entry.sizeMiB(),     entry.durationS(), entry.count()};
        unsigned first = 0;
        for (size_t i = 0; i < std::size(widths); first += widths[i++]) {
            EXPECT_EQ(bitsOf(entry, first, widths[i]), expected[i]) << i;
            EXPECT_EQ(read[i], expected[i]) << i;
        }
    };
    MediaEntry entry(item, 0x15555);
    check(entry, {0x15555, 0xA, 1, 1, 0, 9, 365, 0x2AAAAA, 0x1555555, 0x2AAAA});
    MediaEntry span(item, 1);
    entry.fold(span);
    check(entry, {0x15555, 0xA, 1, 1, 0, 9, 365, 0x155554, 0x1555555, 0x15554});
    check(span, {1, 0xA, 1, 1, 1, 9, 365, 0x2AAAAA, 0x1555555, 0x2AAAA});

    // What does not fit is cut: nothing spills into the next field.
    zep_item_s empty{};
    empty.clip = 2;
    empty.timestamp = 1420070400;  // 2015-01-01
    empty.duration_s = 1u << 25;
    empty.size_bytes = uint64_t{1} << 42;
    empty.last_number = (1u << 18) - 1;
    check(MediaEntry(empty, 1u << 18), {0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    empty.timestamp = 2429913599;  // 2046-12-31 23:59:59
    check(MediaEntry(empty, 0), {0, 0, 0, 0, 0, 31, 364, 0, 0, 0});
    empty.timestamp++;
    check(MediaEntry(empty, 0), {0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
}

}  // namespace

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

#include <mediacheckd/medialist/zep_media_list.h>

namespace {

constexpr uint32_t kMax = 0xFFFFFFFF;

// Sets of content types: bit t stands for type t.
constexpr uint32_t kVideos = 0b111;
constexpr uint32_t kPhotos = 1 << 4 | 1 << 9;
constexpr uint32_t kLapses = 1 << 3 | 1 << 6 | 1 << 8;
constexpr uint32_t kBursts = 1 << 5 | 1 << 12;
constexpr uint32_t kContinuous = 1 << 10;
constexpr uint32_t kAll = 0x7FFF & ~(1 << 7 | 1 << 11);

bool matches(zep_item_s item, std::vector<UploadRule> rules) {
    return ZEPMediaList().matchRules(&item, rules) == 1;
}

// The content types of which the rule accepts an item of status 0.
uint32_t accepted(const UploadRule& rule, zep_item_s item) {
    uint32_t types = 0;
    for (item.content_type = 0; item.content_type < 15; ++item.content_type) {
        types |= matches(item, {rule, {1, 11}}) ? 1u << item.content_type : 0;
    }
    return types;
}

TEST(Rules, AConditionAcceptsItsTypesWithinItsRanges) {
    const struct {
        uint32_t kind, within, scoreOff, durationOff, countOff;
    } cases[] = {{0, kAll, kAll, kAll, kAll},
                 {1, kPhotos, 0, kPhotos, kPhotos},
                 {2, kVideos, 0, 0, kVideos},
                 {3, kVideos, 0, kVideos, kVideos},
                 {4, kVideos, 0, kVideos, kVideos},
                 {6, kLapses, kLapses, kLapses & ~(1u << 3), 1 << 3},
                 {7, kBursts, kBursts, kBursts, kBursts},
                 {8, kContinuous, kContinuous, kContinuous, 0},
                 {10, 0, 0, 0, 0},
                 {11, 0, 0, 0, 0}};
    zep_item_s typical{};
    typical.score = 50;
    typical.duration_s = 15;
    typical.first_number = 7;
    typical.last_number = 10;
    typical.clip = 1;
    for (const auto& [kind, within, scoreOff, durationOff, countOff] : cases) {
        const UploadRule rule{0, kind, "", 50, 50, 15, 15, 4, 4, 0};
        EXPECT_EQ(accepted(rule, typical), within) << kind;
        for (const auto& [field, off] : {std::pair(&zep_item_s::score, scoreOff),
                                         {&zep_item_s::duration_s, durationOff},
                                         {&zep_item_s::last_number, countOff}}) {
            for (const uint32_t step : {1u, kMax}) {
                zep_item_s item = typical;
                item.*field += step;
                EXPECT_EQ(accepted(rule, item), off) << kind;
            }
        }
    }
    zep_item_s plain{};
    plain.first_number = 2;
    EXPECT_EQ(accepted({0, 3}, plain) + accepted({0, 4}, plain), 0u);
    EXPECT_EQ(accepted({0, 8, "", 0, 0, 0, 0, kMax, kMax}, plain), kContinuous);
    plain.highlight = 256;  // a score of 100
    EXPECT_EQ(accepted({0, 1, "", 100, 100}, plain), kPhotos);
    EXPECT_EQ(accepted({0, 2, "", 100, 100}, plain), kVideos);
    EXPECT_EQ(accepted({0, 10}, plain), kAll);
}

TEST(Rules, ATargetAndAConditionInAnyOrder) {
    const UploadRule any{0, 0};
    const struct {
        std::vector<UploadRule> rules;
        uint32_t status;
        bool accepted;
    } cases[] = {{{}, 0, false},
                 {{any}, 0, false},
                 {{{1, 11}}, 0, false},
                 {{any, {1, 11}}, 1, false},
                 {{{1, 12}, any, {255, 15}}, 4, true},
                 {{{1, 11}, {0, 11}}, 0, false},
                 {{{1, 0}, any}, kMax - 10, false},
                 {{{1, 16}, any}, 5, false}};
    for (const auto& c : cases) {
        zep_item_s item{};
        item.upload_status = c.status;
        EXPECT_EQ(matches(item, c.rules), c.accepted) << &c - cases;
    }
}

void expectFields(const MediaEntry& e, const std::vector<uint32_t>& expected) {
    EXPECT_EQ(expected, (std::vector{e.index(), e.type(), e.highlighted(), e.clip(), e.merged(),
                                     e.year(), e.yday(), e.sizeMiB(), e.durationS(), e.count()}));
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
    MediaEntry entry(item, 0x15555);
    MediaEntry span(item, 1);
    expectFields(entry, {0x15555, 0xA, 1, 1, 0, 9, 365, 0x2AAAAA, 0x1555555, 0x2AAAA});
    // The same as bytes.
    const uint8_t bytes[] = {0x55, 0x55, 0xE9, 0x52, 0x5B, 0x55, 0x55,
                             0xB5, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA};
    EXPECT_EQ(std::memcmp(&entry, bytes, sizeof bytes), 0);
    entry.fold(span);
    expectFields(entry, {0x15555, 0xA, 1, 1, 0, 9, 365, 0x155554, 0x1555555, 0x15554});
    expectFields(span, {1, 0xA, 1, 1, 1, 9, 365, 0x2AAAAA, 0x1555555, 0x2AAAA});

    // What does not fit is cut and spills into no other field.
    zep_item_s huge{};
    huge.clip = 2;
    huge.duration_s = 1u << 25;
    huge.size_bytes = uint64_t{1} << 42;
    huge.last_number = (1u << 18) - 1;
    huge.timestamp = 2429913599;  // 2046-12-31 23:59:59
    expectFields(MediaEntry(huge, 1u << 18), {0, 0, 0, 0, 0, 31, 364, 0, 0, 0});
    ++huge.timestamp;
    expectFields(MediaEntry(huge, 1u << 18), {0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
}

}  // namespace

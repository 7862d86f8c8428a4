#include "simulator/card/media_name.h"

#include <gmock/gmock.h>

namespace {

TEST(MediaName, tellsTypeGroupAndNumber) {
    struct Case {
        const char* name;
        int contentType;  // negative: no media
        uint32_t groupNumber;
        uint32_t oneBased;   // the file's number on cameras that count chapters from one
        uint32_t zeroBased;  // and on the others
    };
    constexpr Case kCases[] = {
        {"VXMF0012.MP4", 2, 12, 0, 0},         {"VX020012.MP4", 2, 12, 1, 2},
        {"VX010012.MP4", 2, 12, 0, 1},         {"VH990001.360", 2, 1, 98, 99},
        {"VHAA0001.MP4", 1, 1001, 1, 1},       {"VLBA0034.MP4", 1, 1027, 34, 34},
        {"VMZZ9999.MP4", 1, 1676, 9999, 9999}, {"VXMG0001.MP4", 1, 1319, 1, 1},
        {"VHAA0000.MP4", 0, 0, 0, 0},          {"VKAA0001.MP4", 0, 0, 0, 0},
        {"VHAA0001.360", 0, 0, 0, 0},          {"VXMF0012.360", 0, 0, 0, 0},
        {"V0070002.MP4", 1, 7, 2, 2},          {"G1230045.MP4", 1, 123, 45, 45},
        {"V0070002.360", 0, 0, 0, 0},          {"HOLIDAYS.MP4", 0, 0, 0, 0},
        {"VPAA0001.JPG", 6, 1001, 1, 1},       {"VSAB0007.JPG", 6, 1002, 7, 7},
        {"VPAA0000.JPG", 4, 0, 0, 0},          {"VHAA0001.JPG", 4, 0, 0, 0},
        {"V0010003.JPG", 5, 1, 3, 3},          {"VXMF0001.JPG", 4, 0, 0, 0},
        {"VXMF0001.LRV", -1, 0, 0, 0},         {"vxmf0001.mp4", -1, 0, 0, 0},
        {"VXMF001.MP4", -1, 0, 0, 0},          {"", -1, 0, 0, 0},
    };
    for (const Case& wanted : kCases) {
        for (const bool oneBased : {true, false}) {
            SCOPED_TRACE(testing::Message() << wanted.name << ' ' << oneBased);
            const auto name = simulator::parseMediaName(wanted.name, oneBased);
            ASSERT_EQ(name.has_value(), wanted.contentType >= 0);
            if (name) {
                EXPECT_EQ(name->contentType, static_cast<uint32_t>(wanted.contentType));
                EXPECT_EQ(name->groupNumber, wanted.groupNumber);
                EXPECT_EQ(name->number, oneBased ? wanted.oneBased : wanted.zeroBased);
                EXPECT_EQ(name->groupKey.empty(), wanted.groupNumber == 0);
            }
        }
    }
    EXPECT_EQ(simulator::parseMediaName("VX000012.MP4", true)->contentType, 0u) << "no chapter 0";
    EXPECT_EQ(simulator::parseMediaName("VX000012.MP4", false)->number, 0u);
}

}  // namespace

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "libvxMediaRTOSDB/src/member_mask.h"
#include "libvxMediaRTOSDB/src/member_names.h"
#include "libvxMediaRTOSDB/src/model_number.h"
#include "libvxMediaRTOSDB/src/util_log.h"
#include "platform/csi.h"
#include "tests/support/db_replies.h"

namespace {

using namespace scripted;
using testing::ExitedWithCode;

void setModel(uint32_t model) {
    platform.setting = [model](int key, uint32_t size, uint32_t* length, void* buffer) {
        EXPECT_EQ(key, CSI_MODEL_NUMBER);
        EXPECT_EQ(size, 1400u);
        EXPECT_EQ(*length, 0u);
        std::memcpy(buffer, &model, sizeof model);
        *length = sizeof model;
        return 0;
    };
}

template <typename Record>
Record recordFrom(const Bytes& bytes) {
    Record record;
    std::memcpy(&record, bytes.data(), sizeof record);
    return record;
}

constexpr auto kFiles = MemberNameUse::kFiles;
constexpr auto kDurations = MemberNameUse::kDurations;

void checkNames(bool oneBasedChapters) {
    const struct {
        const char* item;
        uint32_t type, group, member;
        MemberNameUse use;
        const char* format;
        const char* name;
        const char* zeroBasedName = nullptr;  // when the model makes a difference
    } rows[] = {
        // Grouped videos: the letter form, and everything that just misses it.
        {"VHAA0001.MP4", 1, 1001, 2, kFiles, "VH%c%c%04d.MP4", "VHAA0002.MP4"},
        {"VLAA0001.LRV", 1, 1027, 9999, kFiles, "VL%c%c%04d.MP4", "VLBA9999.MP4"},
        {"VMAA0001.MRV", 1, 1676, 1, kFiles, "VM%c%c%04d.MP4", "VMZZ0001.MP4"},
        {"VXAA0001.360", 1, 1026, 1, kFiles, "VX%c%c%04d.MP4", "VXAZ0001.MP4"},
        {"VXQR0001.THM", 1, 1000, 7, kFiles, "VX%c%c%04d.MP4", "VXQR0007.MP4"},
        {"VXQR0001.THM", 1, 1677, 7, kFiles, "VX%c%c%04d.MP4", "VXQR0007.MP4"},
        {"VXQR0001.MP4", 1, 0, 7, kFiles, "VX%c%c%04d.MP4", "VXQR0007.MP4"},
        {"VXQR0001.MP4", 1, 0xFFFFFFFF, 7, kFiles, "VX%c%c%04d.MP4", "VXQR0007.MP4"},
        {"VXAA0001.JPG", 1, 12, 7, kFiles, "V%03d%04d.MP4", "V0120007.MP4"},
        {"VXAA0000.MP4", 1, 12, 7, kFiles, "V%03d%04d.MP4", "V0120007.MP4"},
        {"VXA[0001.MP4", 1, 12, 7, kFiles, "V%03d%04d.MP4", "V0120007.MP4"},
        {"VX@A0001.MP4", 1, 12, 7, kFiles, "V%03d%04d.MP4", "V0120007.MP4"},
        {"VXAA000:.MP4", 1, 12, 7, kFiles, "V%03d%04d.MP4", "V0120007.MP4"},
        {"VPAA0001.MP4", 1, 12, 7, kFiles, "V%03d%04d.MP4", "V0120007.MP4"},
        {"WXAA0001.MP4", 1, 12, 7, kFiles, "W%03d%04d.MP4", "W0120007.MP4"},
        {"V0120001.MP4", 1, 0xFFFFFFFF, 7, kFiles, "V%03d%04d.MP4", "V-010007.MP4"},
        {"V0120001.MP4", 1, 123456, 7, kFiles, "V%03d%04d.MP4", "V1234560007."},
        {"VXAA0001.MP4", 1, 1002, 7, kDurations, "VX%c%c%04d.MP4", "VXAB0007.MP4"},
        {"V0120001.MP4", 1, 12, 7, kDurations, "V0%c%c%04d.MP4", "V0120007.MP4"},
        // Chaptered videos: member 0 has the item's name, further ones a chapter of the model.
        {"VXMF0012.MP4", 2, 12, 0, kFiles, "VX%02d%04d.MP4", "VXMF0012.MP4"},
        {"VXMF0012.MP4", 2, 12, 1, kFiles, "VX%02d%04d.MP4", "VX020012.MP4", "VX010012.MP4"},
        {"VXMF0012.360", 2, 12, 2, kFiles, "VX%02d%04d.MP4", "VX030012.MP4", "VX020012.MP4"},
        {"VH010012.360", 2, 12, 2, kFiles, "VH%02d%04d.360", "VH030012.360", "VH020012.360"},
        {"VH010012.360", 2, 12, 2, kDurations, "VH%02d%04d.MP4", "VH030012.MP4", "VH020012.MP4"},
        {"VH010012.MP4", 2, 12, 11, kFiles, "VH%02d%04d.MP4", "VH120012.MP4", "VH110012.MP4"},
        {"W%010012.MP4", 2, 12, 1, kFiles, "V%%02d%04d.MP4", "V%020012.MP4", "V%010012.MP4"},
        // Photo groups.
        {"VPAA0001.JPG", 6, 1002, 3, kFiles, "VP%c%c%04d.JPG", "VPAB0003.JPG"},
        {"VSAA0001.JPG", 8, 1002, 3, kFiles, "VS%c%c%04d.JPG", "VSAB0003.JPG"},
        {"VPAA0001.JPG", 5, 1002, 3, kFiles, "VP%c%c%04d.JPG", "VPAB0003.JPG"},
        {"VXAA0001.JPG", 10, 2, 3, kFiles, "V%03d%04d.JPG", "V0020003.JPG"},
        {"V0020001.JPG", 5, 2, 30, kFiles, "V%03d%04d.JPG", "V0020030.JPG"},
        {"VPAA0001.MP4", 6, 2, 3, kFiles, "V%03d%04d.JPG", "V0020003.JPG"},
    };
    for (const auto& row : rows) {
        const auto item = recordFrom<db_item_record>(itemRecord(row.type, row.item));
        const MemberNames names(item, row.group, row.use);
        const bool other = !oneBasedChapters && row.zeroBasedName;
        EXPECT_TRUE(names.exist());
        EXPECT_STREQ(names.name(row.member).data(), other ? row.zeroBasedName : row.name);
        EXPECT_STREQ(names.format().data(), row.format);
    }
}

TEST(MemberNames, FollowTheItemsName) {
    reset();  // no settings service: the default model's chapters start at 1
    checkNames(true);
    const auto photo = recordFrom<db_item_record>(itemRecord(4, "VXAA0001.JPG"));
    g_logLevel = UTIL_LOG_WARN;
    EXPECT_FALSE(MemberNames(photo, 1, kFiles).exist());
    g_logLevel = UTIL_LOG_ERROR;
    EXPECT_TRUE(platform.logged("content type 4 unhandled for group"));
}

TEST(MemberNamesDeathTest, FollowTheModel) {
    EXPECT_EXIT(
        {
            reset();
            setModel(25);
            checkNames(false);
            std::exit(testing::Test::HasFailure());
        },
        ExitedWithCode(0), "");
}

TEST(MemberMask, MarksMembers) {
    const auto group = [](uint32_t first, uint32_t last, uint32_t missing) {
        return recordFrom<db_group_info>(groupInfo(1, first, last, missing));
    };
    const struct {
        uint32_t first, last, missing, size, count;
        Bytes mask;
        std::vector<uint32_t> members, unmarked;
    } rows[] = {
        {4, 7, 0, 4, 4, {}, {4, 5, 6, 7}, {4, 5}},
        {4, 7, 2, 4, 4, {0xAF, 0, 0, 0}, {4, 6}, {5, 7}},
        {30, 39, 9, 4, 10, {0, 0x40, 0, 0}, {39}, {30, 31}},
        {0xFFFFFFFE, 0xFFFFFFFF, 1, 4, 2, {0x40, 0, 0, 0}, {0xFFFFFFFF}, {0xFFFFFFFE}},
        {1, 32, 32, 4, 32, Bytes(4), {}, {1, 2}},
        {1, 33, 32, 8, 33, {0, 0, 0, 0, 0x80, 0, 0, 0}, {33}, {1, 2}},
        {5, 4, 0, 0x20000000, 0, {}, {}, {}},
        {0xFFFFFFFF, 0, 1, 4, 0, Bytes(4, 0xFF), {}, {}},
        {0, 10000, 1, 1252, 0, Bytes(1252, 0xFF), {}, {}},
        {0, 0xFFFFFFFF, 0, 0x20000000, 0, {}, {}, {}},
    };
    for (const auto& row : rows) {
        const auto info = group(row.first, row.last, row.missing);
        std::vector<uint32_t> members;
        std::vector<uint32_t> unmarked;
        forEachMember(info, row.mask, [&](uint32_t number) { members.push_back(number); });
        forEachUnmarked(info, row.mask, 2, [&](uint32_t number) { unmarked.push_back(number); });
        EXPECT_EQ(maskSize(info), row.size);
        EXPECT_EQ(numberCount(info), row.count);
        EXPECT_EQ(isDamaged(info), row.count == 0);
        EXPECT_EQ(members, row.members);
        EXPECT_EQ(unmarked, row.unmarked);
    }
    EXPECT_EQ(numberCount(group(1, 10000, 0)), 10000u);
}

TEST(ModelNumberDeathTest, IsReadOnceAndReducedToEightBits) {
    const struct {
        uint32_t setting;
        int model;
        int oneBased;
    } rows[] = {{24, 24, 1}, {25, 25, 0},    {30, 30, 1}, {31, 31, 0}, {32, 32, 1},
                {33, 33, 1}, {50, 50, 1},    {51, 51, 1}, {52, 52, 0}, {53, 53, 1},
                {54, 54, 1}, {0x133, 51, 1}, {0, 0, 0}};
    for (const auto& row : rows)
        EXPECT_EXIT(
            {
                reset();
                g_logLevel = UTIL_LOG_INFO;
                EXPECT_EQ(csiGetModelNumber(), 30);
                EXPECT_TRUE(
                    platform.logged("csi_get csi err, -1 - using model number CAMERA_ID_ORVANE\n"));
                platform.setting = [](int, uint32_t, uint32_t*, void*) { return 0; };
                EXPECT_EQ(usesOneBasedChapters(), 1);
                EXPECT_TRUE(platform.logged(
                    "csi_get invalid len, 0 - using model number CAMERA_ID_ORVANE\n"));
                setModel(row.setting);
                EXPECT_EQ(csiGetModelNumber(), row.model);
                EXPECT_TRUE(platform.logged("model_number, " + std::to_string(row.setting) + "\n"));
                setModel(99);
                EXPECT_EQ(csiGetModelNumber(), row.model);
                EXPECT_EQ(usesOneBasedChapters(), row.oneBased);
                std::exit(testing::Test::HasFailure());
            },
            ExitedWithCode(0), "");
}

}  // namespace

#include <gtest/gtest.h>

#include <cstring>

#include "libvxMediaRTOSDB/src/names/member_names.h"
#include "tests/support/db_replies.h"
#include <mediacheckd/platform/csi.h>
#include <mediacheckd/vxMediaRTOSDB/model_number.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

using namespace scripted;

constexpr auto kFiles = MemberNameUse::kFiles;
constexpr auto kDurations = MemberNameUse::kDurations;

void checkNames(bool oneBasedChapters) {
    const auto check = [](const char* itemName, uint32_t type, uint32_t group, uint32_t member,
                          const char* name, MemberNameUse use = kFiles) {
        const Bytes bytes = itemRecord(type, itemName);
        const auto& item = *reinterpret_cast<const db_item_record*>(bytes.data());
        ChapterNumbers chapters;
        EXPECT_STREQ(MemberNames(item, group, use, chapters).name(member).data(), name);
    };
    check("VHAA0001.MP4", 1, 1001, 2, "VHAA0002.MP4");
    check("VLAA0001.LRV", 1, 1027, 9999, "VLBA9999.MP4");
    check("VMAA0001.MRV", 1, 1676, 1, "VMZZ0001.MP4");
    check("VXQR0001.THM", 1, 1000, 7, "VXQR0007.MP4");
    check("VXQR0001.360", 1, 1677, 7, "VXQR0007.MP4");
    for (const char* item : {"VXAA0001.JPG", "VXAA0000.MP4", "VX@Z0001.MP4", "VXA[0001.MP4",
                             "VXAA000:.MP4", "VPAA0001.MP4"}) {
        check(item, 1, 12, 7, "V0120007.MP4");
    }
    check("WXAA0001.MP4", 1, 12, 7, "W0120007.MP4");
    check("V0120001.MP4", 1, 123456, 7, "V1234560007.");
    check("VXAA0001.MP4", 1, 1002, 7, "VXAB0007.MP4", kDurations);
    check("V0120001.MP4", 1, 1002, 7, "V0AB0007.MP4", kDurations);

    const bool one = oneBasedChapters;
    check("VXMF0012.MP4", 2, 12, 0, "VXMF0012.MP4");
    check("VXMF0012.MP4", 2, 12, 1, one ? "VX020012.MP4" : "VX010012.MP4");
    check("VXMF0012.360", 2, 12, 2, one ? "VX030012.MP4" : "VX020012.MP4");
    check("VH010012.360", 2, 12, 2, one ? "VH030012.360" : "VH020012.360");
    check("W%010012.MP4", 2, 12, 1, one ? "V%020012.MP4" : "V%010012.MP4");
    check("VH010012.360", 2, 12, 2, one ? "VH030012.MP4" : "VH020012.MP4", kDurations);

    check("VPAA0001.JPG", 5, 1002, 3, "VPAB0003.JPG");
    check("VSAA0001.JPG", 8, 1002, 3, "VSAB0003.JPG");
    check("VXAA0001.JPG", 10, 2, 3, "V0020003.JPG");
    check("VPAA0001.MP4", 6, 2, 30, "V0020030.JPG");
}

// Each model needs a process of its own.
void checkModel(uint32_t setting, bool oneBasedChapters) {
    reset();
    EXPECT_EQ(csiGetModelNumber(), 30);
    checkNames(true);
    EXPECT_TRUE(platform.logged("csi err, -1 - using model number CAMERA_ID_ORVANE\n"));
    platform.setting = [](int, uint32_t, uint32_t*, void*) { return 0; };
    EXPECT_EQ(csiGetModelNumber(), 30);
    EXPECT_TRUE(platform.logged("invalid len, 0 - using model number CAMERA_ID_ORVANE\n"));
    platform.setting = [&](int key, uint32_t size, uint32_t* length, void* buffer) {
        std::memcpy(buffer, &setting, sizeof setting);
        *length = sizeof setting;
        return key == CSI_MODEL_NUMBER && size == 1400 ? 0 : -1;
    };
    EXPECT_EQ(csiGetModelNumber(), static_cast<int>(setting & 0xFF));
    platform.setting = nullptr;
    EXPECT_EQ(usesOneBasedChapters(), oneBasedChapters);
    checkNames(oneBasedChapters);
    std::exit(testing::Test::HasFailure());
}

TEST(MemberNamesDeathTest, FollowTheItemsNameAndTheModel) {
    for (uint32_t setting : {24u, 30u, 32u, 33u, 50u, 51u, 53u, 54u, 0x133u}) {
        EXPECT_EXIT(checkModel(setting, true), testing::ExitedWithCode(0), "") << setting;
    }
    for (uint32_t setting : {0u, 23u, 25u, 31u, 49u, 52u, 55u, 0x134u}) {
        EXPECT_EXIT(checkModel(setting, false), testing::ExitedWithCode(0), "") << setting;
    }

    reset();
    db_item_record photo = {};
    photo.content_type = DB_CONTENT_TYPE_SINGLE_PHOTO;
    g_logLevel = UTIL_LOG_WARN;
    ChapterNumbers chapters;
    EXPECT_STREQ(MemberNames(photo, 1, kFiles, chapters).name(1).data(), "");
    g_logLevel = UTIL_LOG_ERROR;
    EXPECT_TRUE(platform.logged("content type 4 unhandled for group"));
}

}  // namespace

#include <gmock/gmock.h>

#include "simulator/card/card.h"
#include "tests/simulator/sample_card.h"

namespace {

using simulator::loadCard;

// The items of a card, each as "DIRECTORY/LEADER type group first last files".
std::vector<std::string> summaries(const simulator::Database& database) {
    std::vector<std::string> texts;
    for (const simulator::MediaItem& item : database.items()) {
        const db_item_record& record = item.leader().record;
        std::ostringstream text;
        text << std::string_view(record.dir_name, kDirNameSize) << '/'
             << std::string_view(record.file_name, kFileNameSize);
        for (const uint32_t value : {item.contentType(), item.groupNumber, item.firstNumber,
                                     item.lastNumber, static_cast<uint32_t>(item.files.size())}) {
            text << ' ' << value;
        }
        texts.push_back(text.str());
    }
    return texts;
}

TEST(Card, groupsFilesByDirectoryAndName) {
    const auto card =
        makeCard({"100VXCAM/VXMF0004.MP4", "100VXCAM/VX020004.MP4", "100VXCAM/VX030004.MP4",
                  "100VXCAM/VH010005.MP4", "100VXCAM/VPAA0002.JPG", "100VXCAM/VPAA0004.JPG",
                  "100VXCAM/V0010001.JPG", "100VXCAM/V0010001.MP4", "101VXCAM/VPAA0005.JPG",
                  "101VXCAM/VPAA5000.JPG", "101VXCAM/VX020004.MP4", "101VXCAM/notes.txt",
                  "MISC/VXMF0001.MP4", "101VXCAM/LONGNAME1.MP4"});
    EXPECT_THAT(summaries(loadCard(card)),
                testing::ElementsAre(
                    "100VXCAM/V0010001.JPG 5 1 1 1 1", "100VXCAM/V0010001.MP4 1 1 1 1 1",
                    "100VXCAM/VH010005.MP4 0 5 0 0 1", "100VXCAM/VPAA0002.JPG 6 1001 2 4 2",
                    "100VXCAM/VXMF0004.MP4 2 4 0 2 3", "101VXCAM/VPAA0005.JPG 6 1001 5 5 1",
                    "101VXCAM/VPAA5000.JPG 6 1001 5000 5000 1", "101VXCAM/VX020004.MP4 0 4 1 1 1"));
}

TEST(Card, settingsTellWhatFilesCannot) {
    const simulator::Database database = loadCard(
        makeCard({"100VXCAM/VXMF0004.MP4", "100VXCAM/VX020004.MP4", "100VXCAM/VPAA0002.JPG",
                  "100VXCAM/VPAA0003.JPG", "100VXCAM/VXMF0001.MP4", "100VXCAM/SESSION1.BIN"},
                 R"({"model_number": 52, "session_id": 9, "files": {
            "100VXCAM/VXMF0001.MP4": {"content_type": 3, "duration_ms": 5000, "clip": true,
                "flags": ["eis", "hdr"], "score": 127, "upload_status": 4294967295,
                "highlights": [7, 7], "gumi": "000102030405060708090a0B0C0D0E0F",
                "parent_gumi": "ff000000000000000000000000000000",
                "created": "1970-01-02 00:00:01", "frame_rate": [30000, 1001]},
            "100VXCAM/VPAA0003.JPG": {"content_type": 8, "missing": [1, 2], "highlights": [1, 3]},
            "100VXCAM/SESSION1.BIN": {"content_type": 7, "session": true}}})"));
    EXPECT_THAT(summaries(database), testing::ElementsAre("100VXCAM/SESSION1.BIN 7 0 0 0 1",
                                                          "100VXCAM/VPAA0003.JPG 8 1001 1 3 1",
                                                          "100VXCAM/VXMF0001.MP4 3 1 0 0 1",
                                                          "100VXCAM/VXMF0004.MP4 2 4 0 2 2"));
    EXPECT_EQ(database.modelNumber, 52u);
    EXPECT_EQ(database.sessionId, 9u);
    EXPECT_TRUE(database.items()[0].isSessionFile);
    EXPECT_THAT(database.items()[1].highlightedNumbers, testing::ElementsAre(1, 3));
    const simulator::MediaFile& video = database.items()[2].leader();
    EXPECT_EQ(video.video.duration_ms, 5000u);
    EXPECT_EQ(video.video.clip, 1u);
    EXPECT_EQ(video.record.attributes, 0x1003u);
    EXPECT_EQ(video.record.score, 127u);
    EXPECT_EQ(video.record.upload_status, 0xFFFFFFFF);
    EXPECT_EQ(video.record.created, 86401u);
    EXPECT_GT(video.record.modified, 1'500'000'000u) << "from the file";
    EXPECT_EQ(video.gumi.bytes[15], 15);
    EXPECT_EQ(video.moreInfo.frame_rate_denominator, 1001u);
    EXPECT_EQ(database.findByGumi(video.gumi), &video);
    EXPECT_EQ(database.findByGumi(db_gumi{}), nullptr);
}

}  // namespace

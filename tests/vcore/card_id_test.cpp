#include <mediacheckd/vcore/card_id.h>

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

namespace fs = std::filesystem;

const fs::path kCard = "/tmp/fuse_d/MISC/card";

void write(const fs::path& path, const std::string& content) {
    fs::create_directories(path.parent_path());
    std::ofstream(path) << content;
}

// Returns result and identity, and the report if there is one.
std::string ask(int storage = CARD_STORAGE_SD) {
    char identity[CARD_ID_SIZE] = "before";
    testing::internal::CaptureStderr();
    const int result = getCardIDStrExt(identity, storage);
    for (size_t i = strlen(identity); result != 0 && i < sizeof identity; ++i) {
        EXPECT_EQ(identity[i], 0) << "nothing of the caller's stays behind the identity";
    }
    return std::to_string(result) + ' ' + identity + testing::internal::GetCapturedStderr();
}

// One less than the square of a random number of 31 bits.
bool isDrawn(const std::string& identity) {
    const long long square = std::stoll(identity) + 1;
    const long long root = std::llround(std::sqrt(static_cast<double>(square)));
    return root > 0 && root < 1LL << 31 && root * root == square;
}

// The card is a small file system of its own.
constexpr unsigned long kReadOnly = MS_REMOUNT | MS_RDONLY;
void mountCard(const char* options = "", unsigned long flags = 0) {
    fs::create_directories("/tmp/fuse_d");
    ASSERT_EQ(mount("tmpfs", "/tmp/fuse_d", "tmpfs", flags, options), 0);
}

void limitFileSize(rlim_t size) {
    const rlimit limit{size, RLIM_INFINITY};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

TEST(CardId, IsReadOrDrawn) {
    const std::string digits = "123456789012345678901234567890";
    const std::string none = "no file, no folder";
    const std::pair<std::string, std::string> cases[] = {
        {"12345", "12345"}, {"0", "0"}, {digits + "1", digits},
        {none, ""},         {"", ""},   {"12345\n", ""},
        {"1/", ""},         {"1:", ""}};
    for (const auto& [stored, kept] : cases) {
        fs::remove_all(kCard.parent_path());
        if (stored != none) {
            write(kCard, stored);
        }
        const std::string answer = ask();
        std::string after;
        std::getline(std::ifstream(kCard), after, '\0');
        EXPECT_EQ(answer, "0 " + (kept.empty() ? after : kept));
        EXPECT_TRUE(kept.empty() ? isDrawn(after) : after == stored) << after;
        EXPECT_EQ(ask(), answer);
    }
    write(kCard, "11");
    write("/tmp/fuse_i/MISC/card", "22");
    EXPECT_EQ(ask(0) + ask(1) + ask(2) + ask(-1), "0 110 220 110 11");
    EXPECT_EQ(isDigitString("x", 0) & isDigitString("", 9) & isDigitString("12x", 2), 1);
}

TEST(CardId, ReportsWhatFails) {
    const std::pair<void (*)(), const char*> cases[] = {
        {[] { write("/tmp/fuse_d/MISC", "text"); },
         "-1 0Path:/tmp/fuse_d/MISC/ exists and is a NOT folder\n"},
        {[] { mountCard("", kReadOnly); }, "-1 0Failed to create folder:/tmp/fuse_d/MISC/\n"},
        {[] { fs::create_directories(kCard); },
         "-1 0Failed to create file  /tmp/fuse_d/MISC/card\n"},
        {[] { write(kCard, "12"), mountCard("", kReadOnly); }, "0 12"},
        {[] {
             mountCard("size=4k", MS_REMOUNT);
             write("/tmp/fuse_d/MISC/filler", std::string(4096, 'x'));
         },
         "-1 0Failed to get write card_id to file\n"},
        {[] {
             fs::create_directories(kCard.parent_path());
             fs::create_symlink("/proc/self/mem", kCard);
         },
         "-1 0Failed to read file  /tmp/fuse_d/MISC/card\n"},
        {[] { write(kCard, "1x"), mountCard("", kReadOnly); },
         "-1 0Failed to create file  /tmp/fuse_d/MISC/card\n"}};
    for (const auto& [prepare, answer] : cases) {
        mountCard();
        prepare();
        EXPECT_EQ(ask(), answer);
        umount("/tmp/fuse_d");
    }
    write(kCard, "");
    limitFileSize(5);
    char identity[CARD_ID_SIZE];
    EXPECT_EQ(getCardIDStr(identity), -1);
    limitFileSize(RLIM_INFINITY);
    EXPECT_FALSE(fs::exists(kCard)) << "no part of an identity stays";
    testing::internal::CaptureStderr();
    EXPECT_EQ(getCardIDStr(nullptr), -1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Cannot call with null pointer\n");
}

}  // namespace

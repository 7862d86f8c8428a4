#include <mediacheckd/vxMediaRTOSDB/directory_scan.h>

#include <sstream>

#include "tests/vxmediartosdb/reply_sweep.h"

namespace {

using namespace scripted;
using DirectoryScan = QueryTest;

constexpr uint32_t kCapacity = 6;

// N0000001.JPG for '1' and so on; empty for '0'.
Bytes nameOf(char digit) {
    return digit == '0' ? Bytes(12) : text(std::string("N000000") + digit + ".JPG");
}

// A message's entries, one for each digit; a '.' is a part of an entry.
Bytes entries(const std::string& digits) {
    Bytes bytes;
    for (char digit : digits) {
        append(bytes, digit == '.' ? Bytes(19) : join({nameOf(digit), words({1, 2})}));
    }
    return bytes;
}

int oddOnly(const char* fileName, int length) {
    return length == 12 && (fileName[7] - '0') % 2;
}

TEST_F(DirectoryScan, CollectsTheEntriesOfAllMessages) {
    // messages: separated by '|'.
    const auto check = [](uint32_t transfers, uint32_t names, int result, const char* messages,
                          db_scandir_filter filter, const std::string& kept, const char* log) {
        SCOPED_TRACE(messages);
        reset();
        Exchange exchange;
        std::istringstream digits(messages);
        for (std::string message; std::getline(digits, message, '|');) {
            exchange.replies.push_back(entries(message));
        }
        Bytes& first = exchange.replies.front();
        first = join({words({12, 0, transfers, names, 0}), first});
        platform.then(exchange);
        Bytes expected;
        for (char digit : kept) {
            append(expected, join({Bytes(3, 0xEE), nameOf(digit), {0}, words({2, 1})}));
        }
        expected.resize(kCapacity * sizeof(db_scandir_entry), 0xEE);

        Bytes array(expected.size(), 0xEE);
        auto* const found = reinterpret_cast<db_scandir_entry*>(array.data());
        uint32_t count = kCapacity;
        EXPECT_EQ(dbScanDirectory("100VMEDI", found, &count, filter), result);
        EXPECT_EQ(count, kept.size());
        EXPECT_EQ(array, expected);
        EXPECT_TRUE(platform.logged(log)) << testing::PrintToString(platform.logs);
        const Bytes& request = platform.requests.at(0);
        EXPECT_EQ(request, join({words({12, 1, wordAt(request, 8)}), text("100VMEDI")}));
    };
    g_logLevel = UTIL_LOG_DEBUG;
    check(3, 5, 0, "12|34|5", nullptr, "12345", "                number_transfers 3\n");
    check(2, 5, 0, "12|34|5", nullptr, "1234", "                number_file_names 5\n");
    check(9, 3, 0, "12|3|4", nullptr, "123", "");
    check(9, 5, 0, "12.|.|3", nullptr, "12", "");
    check(2, 4, 0, "12|34", oddOnly, "13", "");
    check(2, 2, -5, "|12", nullptr, "12", "ERROR:no scandir_result_item received!");
    check(1, 2, 0, "01", nullptr, "01", "ERROR:scandir_result_item filename is empty!");
    check(3, 9, -10, "1234|567|89", oddOnly, "135", "ERROR:not enough size of file_entries!");
    check(2, ~0u, 0, "1|2", nullptr, "12", "SCANDIR response token is not matched!");
}

TEST_F(DirectoryScan, JudgesTheFirstMessage) {
    sweep("scan", join({words({12, 0, 1, 9, 0}), entries("1234567")}), [](const Bytes& reply) {
        const size_t names = reply.size() < 20 ? 0 : (reply.size() - 20) / 20;
        const size_t taken = std::min<size_t>(names, wordOf(reply, 12));
        const bool failed = reply.size() < 20 || wordOf(reply, 4) != 0;
        const int counted = taken == 0 ? -5 : taken > kCapacity ? -10 : 0;
        db_scandir_entry kept[kCapacity];
        uint32_t count = kCapacity;
        EXPECT_EQ(dbScanDirectory("100VMEDI", kept, &count, nullptr),
                  reply.size() < 20 ? -3 : (failed ? -7 : counted));
        EXPECT_EQ(count, failed ? 0 : std::min<size_t>(taken, kCapacity));
    });
}

TEST_F(DirectoryScan, WritesNothingWhenItCannotAsk) {
    const auto check = [](const char* directory, int result) {
        uint32_t count = 3;
        EXPECT_EQ(dbScanDirectory(directory, nullptr, &count, nullptr), result);
        EXPECT_EQ(count, 0u);
    };
    check("100VMED", -4);
    check("100VMEDIA", -4);
    check(nullptr, -4);
    platform.initResults = {-9};
    check("100VMEDI", -1);
    EXPECT_TRUE(platform.requests.empty());
    check("100VMEDI", -1);
    EXPECT_TRUE(platform.logged("bytesRead=-1, RTOS transaction failed.\n"));
    EXPECT_EQ(platform.closed, 1);
}

}  // namespace

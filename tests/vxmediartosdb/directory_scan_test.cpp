#include "libvxMediaRTOSDB/src/directory_scan.h"

#include <cstring>
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
    for (char digit : digits)
        append(bytes, digit == '.' ? Bytes(19) : join({nameOf(digit), words({1, 2})}));
    return bytes;
}

int oddOnly(const char* fileName, int length) {
    return length == 12 && (fileName[7] - '0') % 2;
}

TEST_F(DirectoryScan, CollectsTheEntriesOfAllMessages) {
    const struct {
        uint32_t transfers, names;
        int result;
        const char* messages;  // separated by '|'
        db_scandir_filter filter;
        std::string kept;
        const char* log;
    } cases[] = {
        {3, 5, 0, "12|34|5", nullptr, "12345", "                number_transfers 3\n"},
        {2, 5, 0, "12|34|5", nullptr, "1234", "                number_file_names 5\n"},
        {9, 3, 0, "12|3|4", nullptr, "123", ""},
        {9, 5, 0, "12.|.|3", nullptr, "12", ""},
        {2, 4, 0, "12|34", oddOnly, "13", ""},
        {2, 2, -5, "|12", nullptr, "12", "ERROR:no scandir_result_item received!"},
        {1, 2, 0, "01", nullptr, "01", "ERROR:scandir_result_item filename is empty!"},
        {3, 9, -10, "1234|567|89", oddOnly, "135", "ERROR:not enough size of file_entries!"},
        {2, ~0u, 0, "1|2", nullptr, "12", "SCANDIR response token is not matched!"},
    };
    g_logLevel = UTIL_LOG_DEBUG;
    for (const auto& row : cases) {
        SCOPED_TRACE(row.messages);
        reset();
        Exchange exchange;
        std::istringstream messages(row.messages);
        for (std::string digits; std::getline(messages, digits, '|');)
            exchange.replies.push_back(entries(digits));
        Bytes& first = exchange.replies.front();
        first = join({words({12, 0, row.transfers, row.names, 0}), first});
        platform.then(exchange);
        db_scandir_entry kept[kCapacity];
        std::memset(kept, 0xEE, sizeof kept);
        uint32_t count = kCapacity;
        EXPECT_EQ(dbScanDirectory("100VMEDI", kept, &count, row.filter), row.result);

        Bytes expected;
        for (char digit : row.kept)
            append(expected, join({Bytes(3, 0xEE), nameOf(digit), {0}, words({2, 1})}));
        EXPECT_EQ(count, row.kept.size());
        expected.resize(sizeof kept, 0xEE);
        EXPECT_EQ(std::memcmp(kept, expected.data(), sizeof kept), 0);
        EXPECT_TRUE(platform.logged(row.log)) << testing::PrintToString(platform.logs);
        const Bytes& request = platform.requests.at(0);
        EXPECT_EQ(request, join({words({12, 1, wordAt(request, 8)}), text("100VMEDI")}));
    }
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
    const auto scan = [](const char* directory) {
        uint32_t count = 3;
        const int result = dbScanDirectory(directory, nullptr, &count, nullptr);
        EXPECT_EQ(count, 0u);
        return result;
    };
    for (const char* directory : {"100VMED", "100VMEDIA", static_cast<const char*>(nullptr)})
        EXPECT_EQ(scan(directory), -4);
    platform.initResults = {-9};
    EXPECT_EQ(scan("100VMEDI"), -1);
    EXPECT_TRUE(platform.requests.empty());
    EXPECT_EQ(scan("100VMEDI"), -1);
    EXPECT_TRUE(platform.logged("bytesRead=-1, RTOS transaction failed.\n"));
    EXPECT_EQ(platform.closed, 1);
}

}  // namespace

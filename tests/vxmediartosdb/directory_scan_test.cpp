#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

#include "libvxMediaRTOSDB/src/directory_scan.h"
#include "libvxMediaRTOSDB/src/util_log.h"
#include "tests/support/db_replies.h"

namespace {

using namespace scripted;

constexpr uint32_t kCapacity = 6;

// The answer's entries, one for each digit: N0000001.JPG and so on; 0 has an empty name, a '.' is a
// part of an entry.
Bytes entries(const std::string& digits) {
    Bytes bytes;
    for (char digit : digits) {
        const Bytes name = digit == '0' ? Bytes(12) : text(std::string("N000000") + digit + ".JPG");
        append(bytes, digit == '.' ? Bytes(19) : join({name, words({1, 2})}));
    }
    return bytes;
}

int oddOnly(const char* fileName, int length) {
    return length == 12 && (fileName[7] - '0') % 2;
}

TEST(DirectoryScan, CollectsTheEntriesOfAllMessages) {
    const struct {
        uint32_t status, transfers, names;
        int result;
        const char* messages;  // separated by '|'
        db_scandir_filter filter;
        std::string kept;
        const char* log;
    } cases[] = {
        {0, 1, 2, 0, "12", nullptr, "12", "ResponseHeader: status 0\n"},
        {0, 3, 5, 0, "12|34|5", nullptr, "12345", "                number_transfers 3\n"},
        {0, 2, 5, 0, "12|34|5", nullptr, "1234", "                number_file_names 5\n"},
        {0, 9, 3, 0, "12|3|4", nullptr, "123", ""},
        {0, 9, 5, 0, "12.|.|3", nullptr, "12", ""},
        {0, 9, 5, 0, "12", nullptr, "12", ""},
        {0, 1, 1, 0, "12", nullptr, "1", ""},
        {0, 2, 4, 0, "12|34", oddOnly, "13", ""},
        {0, 2, 2, -5, "|12", nullptr, "12", "ERROR:no scandir_result_item received!"},
        {0, 1, 2, 0, "01", nullptr, "01", "ERROR:scandir_result_item filename is empty!"},
        {0, 1, 7, -10, "1234567", oddOnly, "135", "ERROR:not enough size of file_entries!"},
        {0, 3, 9, -10, "1234|567|89", nullptr, "123456", "not enough size of file_entries!"},
        {0, 2, 0xFFFFFFFF, 0, "1|2", nullptr, "12", "SCANDIR response token is not matched!"},
        {8, 1, 1, -7, "1", nullptr, "", "DB_CMD_NON_DB_SCANDIR, error on IPC received, status 8\n"},
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
        first = join({words({12, row.status, row.transfers, row.names, 0}), first});
        platform.then(exchange);
        db_scandir_entry kept[kCapacity];
        std::memset(kept, 0xEE, sizeof kept);
        uint32_t count = kCapacity;
        EXPECT_EQ(dbScanDirectory("100VMEDI", kept, &count, row.filter), row.result);

        Bytes expected;
        for (char digit : row.kept) {
            const Bytes entry = entries({digit});
            append(expected, join({Bytes(3, 0xEE),
                                   Bytes(entry.begin(), entry.begin() + 12),
                                   {0},
                                   words({2, 1})}));
        }
        EXPECT_EQ(count, row.kept.size());
        expected.resize(sizeof kept, 0xEE);
        EXPECT_EQ(std::memcmp(kept, expected.data(), sizeof kept), 0);
        EXPECT_TRUE(platform.logged(row.log)) << testing::PrintToString(platform.logs);
        EXPECT_EQ(platform.opened, platform.closed);
        const Bytes& request = platform.requests.at(0);
        EXPECT_EQ(request, join({words({12, 1, wordAt(request, 8)}), text("100VMEDI")}));
    }
    g_logLevel = UTIL_LOG_ERROR;
}

TEST(DirectoryScan, WritesNothingWhenItFails) {
    const auto check = [](const char* directory, int result, const std::string& log,
                          int initResult = 0, const Exchange& exchange = {}) {
        reset();
        platform.initResults = {initResult};
        platform.then(exchange);
        uint32_t count = 3;
        EXPECT_EQ(dbScanDirectory(directory, nullptr, &count, nullptr), result) << log;
        EXPECT_EQ(count, 0u);
        EXPECT_TRUE(log.empty() ? platform.opened == 0 : platform.logged(log)) << log;
        EXPECT_EQ(platform.opened, platform.closed);
    };
    for (const char* directory : {"100VMED", "100VMEDIA", static_cast<const char*>(nullptr)})
        check(directory, -4, "");
    check("100VMEDI", -1, "vxIpcInit fail, ret -9\n", -9);
    check("100VMEDI", -1, "bytesRead=-1, RTOS transaction failed.\n", 0, sendFails());
    check("100VMEDI", -3, "bytesRead=19 < sizeof db_scandir_response_header:20, failed, ret -3\n",
          0, reply(Bytes(19)));
}

}  // namespace

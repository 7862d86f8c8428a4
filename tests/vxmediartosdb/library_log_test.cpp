#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

#include "libvxMediaRTOSDB/src/log/util_assert.h"
#include "tests/support/scripted_platform.h"
#include <mediacheckd/platform/debug_level.h>
#include <mediacheckd/vxMediaRTOSDB/rtos_connection.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

using namespace scripted;
using testing::ContainsRegex;

constexpr uint32_t kFile = 1u << 29;
constexpr uint32_t kPrint = 1u << 30;

TEST(UtilLog, CutsTheMessageAndKeepsThePlace) {
    const struct {
        size_t message, kept, file;
        bool place;
    } rows[] = {{0, 0, 5, true},       {334, 334, 5, true},    {335, 334, 5, true},
                {5000, 334, 85, true}, {5000, 334, 86, false}, {334, 334, 85, true},
                {334, 334, 86, false}, {324, 324, 95, true},   {324, 324, 96, false}};
    for (const auto& row : rows) {
        reset();
        const std::string file(row.file, 'f');
        util_log_print(UTIL_LOG_DEBUG, 12, file.c_str(), "%s",
                       std::string(row.message, 'm').c_str());
        std::string expected = "<3>UTIL_LOG_DEBUG:";
        expected.append(row.kept, 'm').append(row.place ? " @" + file + ":12" : " ");
        EXPECT_EQ(platform.logs, std::vector<std::string>{expected});
    }
}

TEST(UtilLog, WritesUpToTheLevel) {
    EXPECT_EQ(g_logLevel, 2u);
    for (g_logLevel = 0; g_logLevel <= 6; ++g_logLevel) {
        reset();
        for (uint32_t level = 1; level <= 6; ++level) {
            UTIL_LOG(level, "x");
        }
        EXPECT_EQ(platform.logs.size(), g_logLevel);
    }
    g_logLevel = UTIL_LOG_ERROR;
    for (const char* name :
         {"FATAL:x @", "ERROR:x @", "WARN :x @", "DEBUG:x @", "INFO :x @", "TRACE:x @"}) {
        EXPECT_TRUE(platform.logged(name));
    }
}

// Runs in a child: shows standard output and then the system log on standard error.
void reportAndFail(uint32_t debugLevel) {
    reset();
    g_debug_level = debugLevel;
    dup2(STDERR_FILENO, STDOUT_FILENO);
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    std::atexit([] {
        for (const auto& line : platform.logs) {
            std::fprintf(stderr, "%s", line.c_str());
        }
    });
    UTIL_DEBUG_ERROR("Db response size too small.");
    uint8_t byte = 0;
    (void)rtosCall(nullptr, &byte, 1, &byte);
}

TEST(UtilAssertDeathTest, ReportsAsTheDebugLevelSays) {
    mkdir("/tmp/fuse_d", 0755);
    const std::string time = "[A-Z][a-z]{2}[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2} ";
    const std::string error =
        "\\[   reportAndFail:[ 0-9]{4}\\] ERROR: Db response size too small.\n";
    const std::string failure =
        "\033\\[31mASSERT:[^ ]*rtos_connection.cpp/rtosCall:[0-9]+:pRtosConn\n\033\\[0m";
    const std::pair<uint32_t, std::string> rows[] = {
        {0, ""},
        {kPrint | kFile | 7, ""},
        {8, "<7>" + failure},
        {kPrint | 15, time + failure + "<7>" + failure},
        {kPrint | 16, time + error + time + failure + "<7>" + error + "<7>" + failure},
        {kFile | 255, "<7>" + error + "<7>" + failure}};
    for (const auto& [debugLevel, output] : rows) {
        EXPECT_EXIT(reportAndFail(debugLevel), testing::ExitedWithCode(255),
                    ContainsRegex("^" + output + "$"));
    }
    const std::string condition(3000, 'c');
    EXPECT_EXIT(
        (reset(), g_debug_level = kPrint | 8, dup2(STDERR_FILENO, STDOUT_FILENO),
         setenv("TZ", "XYZ-26", 1), utilAssertFailed("path", "function", 1, condition.c_str())),
        testing::ExitedWithCode(255), "path/function:1:" + condition + "\n");
    int gone[2];
    ASSERT_EQ(pipe(gone), 0);
    EXPECT_EXIT((g_debug_level = kPrint | 8, dup2(gone[1], STDOUT_FILENO), close(gone[0]),
                 close(gone[1]), utilAssertFailed("path", "function", 1, "nobody reads")),
                testing::ExitedWithCode(255), "");
    std::ifstream file("/tmp/fuse_d/wifi_log.txt");
    const std::string text(std::istreambuf_iterator<char>(file), {});
    EXPECT_THAT(text, ContainsRegex("^" + time + error + time + failure + "$"));
}

}  // namespace

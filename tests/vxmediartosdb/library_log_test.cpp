#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <syslog.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "libvxMediaRTOSDB/src/rtos_connection.h"
#include "libvxMediaRTOSDB/src/util_assert.h"
#include "libvxMediaRTOSDB/src/util_log.h"
#include "platform/debug_level.h"
#include "tests/support/scripted_platform.h"

namespace {

using namespace scripted;
using testing::ContainsRegex;
using testing::ExitedWithCode;

constexpr uint32_t kFile = 1u << 29;
constexpr uint32_t kPrint = 1u << 30;
const std::string kTime = "[A-Z][a-z]{2}[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2} ";

TEST(UtilLog, CutsTheMessageAndKeepsThePlace) {
    const std::string prefix = "UTIL_LOG_DEBUG:";
    const std::string place = " @a.cpp:12";
    const size_t whole = 349 - prefix.size();
    const std::string longFile(90, 'f');
    const struct {
        size_t message;
        std::string file;
        std::string expected;
    } rows[] = {
        {0, "a.cpp", prefix + place},
        {whole, "a.cpp", prefix + std::string(whole, 'm') + place},
        {whole + 1, "a.cpp", prefix + std::string(whole, 'm') + place},
        {5000, "a.cpp", prefix + std::string(whole, 'm') + place},
        {whole, longFile, prefix + std::string(whole, 'm') + " "},
        {5000, longFile.substr(5),
         prefix + std::string(whole, 'm') + " @" + longFile.substr(5) + ":12"},
        {5000, longFile.substr(4), prefix + std::string(whole, 'm') + " "},
        {whole - 10, longFile, prefix + std::string(whole - 10, 'm') + " @" + longFile + ":12"},
    };
    for (const auto& row : rows) {
        reset();
        util_log_print(UTIL_LOG_DEBUG, 12, row.file.c_str(), "%s",
                       std::string(row.message, 'm').c_str());
        EXPECT_EQ(platform.logs, std::vector<std::string>{row.expected}) << row.message;
        EXPECT_EQ(platform.logPriorities, std::vector<int>{LOG_ERR});
    }
}

TEST(UtilLog, WritesUpToTheLevel) {
    const char* names[] = {"OFF  ", "FATAL", "ERROR", "WARN ", "DEBUG", "INFO ", "TRACE"};
    EXPECT_EQ(g_logLevel, 2u);
    for (uint32_t level = 0; level <= 6; level++) {
        for (uint32_t line = 1; line <= 6; line++) {
            reset();
            g_logLevel = level;
            UTIL_LOG(line, "%d bytes\n", 3);
            EXPECT_EQ(platform.logs.size(), line <= level ? 1u : 0u);
            EXPECT_EQ(platform.logged(std::string("UTIL_LOG_") + names[line] +
                                      ":3 bytes\n @library_log_test.cpp:"),
                      line <= level);
        }
    }
    g_logLevel = UTIL_LOG_ERROR;
}

std::string debugFile() {
    std::ostringstream text;
    text << std::ifstream("/tmp/fuse_d/wifi_log.txt").rdbuf();
    return text.str();
}

// Runs in a child: shows standard output, then the system log, on standard error.
void failAssertion(uint32_t debugLevel) {
    reset();
    g_debug_level = debugLevel;
    dup2(STDERR_FILENO, STDOUT_FILENO);
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    std::atexit([] {
        for (const auto& line : platform.logs)
            std::fprintf(stderr, "<syslog>%s", line.c_str());
    });
    uint8_t byte = 0;
    (void)rtosCall(nullptr, &byte, 1, &byte);
}

TEST(UtilAssertDeathTest, ReportsAsTheDebugLevelSays) {
    mkdir("/tmp/fuse_d", 0755);
    const std::string report =
        "\033\\[31mASSERT:[^ ]*rtos_connection.cpp/rtosCall:[0-9]+:pRtosConn\n\033\\[0m";
    const std::string printed = "^" + kTime + report;
    const std::string logged = "<syslog>" + report + "$";
    const struct {
        uint32_t debugLevel;
        std::string output;
    } rows[] = {
        {0, "^$"},
        {kPrint | kFile | 7, "^$"},
        {8, "^" + logged},
        {kPrint | 8, printed + logged},
        {kFile | 255, "^" + logged},
    };
    for (const auto& row : rows)
        EXPECT_EXIT(failAssertion(row.debugLevel), ExitedWithCode(255), ContainsRegex(row.output));
    EXPECT_THAT(debugFile(), ContainsRegex(printed + "$"));
}

TEST(UtilDebugError, ReportsAsTheDebugLevelSays) {
    const std::string report = "\\[ *TestBody: [0-9]+\\] ERROR: Db response size too small.\n$";
    const std::string printedReport = "^" + kTime + report;
    for (uint32_t level : {15u, 16u, kPrint | 15, kPrint | 16}) {
        reset();
        g_debug_level = level;
        testing::internal::CaptureStdout();
        UTIL_DEBUG_ERROR("Db response size too small.");
        const std::string printed = testing::internal::GetCapturedStdout();
        if (level & 16)
            EXPECT_THAT(platform.logs, testing::ElementsAre(ContainsRegex("^" + report)));
        else
            EXPECT_TRUE(platform.logs.empty());
        EXPECT_THAT(printed, ContainsRegex(level == (kPrint | 16) ? printedReport : "^$"));
    }
}

}  // namespace

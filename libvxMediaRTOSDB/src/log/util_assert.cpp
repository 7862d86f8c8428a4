#include "libvxMediaRTOSDB/src/log/util_assert.h"

#include <syslog.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include <mediacheckd/platform/debug_level.h>

namespace {

constexpr uint32_t kAssertThreshold = 7;
constexpr uint32_t kErrorThreshold = 15;
constexpr uint32_t kReportToFile = 1u << 29;
constexpr uint32_t kReportToStdout = 1u << 30;
constexpr const char* kDebugFile = "/tmp/fuse_d/wifi_log.txt";
constexpr size_t kTimestampSize = 20;
constexpr size_t kReportSize = 1024;

bool reports(uint32_t threshold) {
    return (g_debug_level & 0xFFu) > threshold;
}

void report(const char* text) {
    char timestamp[kTimestampSize] = {};
    const time_t now = time(nullptr);
    tm local = {};
    if (localtime_r(&now, &local) != nullptr)
        std::strftime(timestamp, sizeof timestamp, "%b%d %H:%M:%S", &local);

    if (g_debug_level & kReportToStdout)
        std::printf("%s %s", timestamp, text);
    if (g_debug_level & kReportToFile) {
        if (FILE* file = std::fopen(kDebugFile, "a+")) {
            std::fprintf(file, "%s %s", timestamp, text);
            std::fclose(file);
        }
    }
    openlog(nullptr, LOG_CONS | LOG_PERROR, LOG_USER);
    syslog(LOG_DEBUG, "%s", text);
    closelog();
}

}  // namespace

void utilAssertFailed(const char* path, const char* function, int line, const char* condition) {
    if (reports(kAssertThreshold)) {
        char text[kReportSize];
        std::snprintf(text, sizeof text, "\033[31mASSERT:%s/%s:%d:%s\n\033[0m", path, function,
                      line, condition);
        report(text);
    }
    std::exit(-1);
}

void utilDebugError(const char* function, int line, const char* message) {
    if (!reports(kErrorThreshold))
        return;
    char text[kReportSize];
    std::snprintf(text, sizeof text, "[%16s:%4d] ERROR: %s\n", function, line, message);
    report(text);
}

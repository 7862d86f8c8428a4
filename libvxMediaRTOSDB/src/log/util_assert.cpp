#include "libvxMediaRTOSDB/src/log/util_assert.h"

#include <syslog.h>

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>

#include "vcore/base/write_guard.h"
#include <mediacheckd/platform/debug_level.h>

namespace {

constexpr uint32_t kAssertThreshold = 7;
constexpr uint32_t kErrorThreshold = 15;
constexpr uint32_t kReportToFile = 1u << 29;
constexpr uint32_t kReportToStdout = 1u << 30;
constexpr size_t kTimestampSize = 20;
constexpr const char* kDebugFile = "/tmp/fuse_d/wifi_log.txt";

bool reports(uint32_t threshold) {
    return (g_debug_level & 0xFFu) > threshold;
}

struct Free {
    void operator()(char* memory) const { std::free(memory); }
};

// Of any length: the last characters of a report end its line and its colour.
__attribute__((format(printf, 1, 2))) void report(const char* format, ...) {
    char* formatted = nullptr;
    va_list arguments;
    va_start(arguments, format);
    const int length = vasprintf(&formatted, format, arguments);
    va_end(arguments);
    if (length < 0) {
        return;
    }
    const std::unique_ptr<char, Free> text(formatted);

    char timestamp[kTimestampSize] = {};
    const time_t now = time(nullptr);
    tm local = {};
    tzset();
    if (localtime_r(&now, &local) != nullptr) {
        std::strftime(timestamp, sizeof timestamp, "%b%d %H:%M:%S", &local);
    }

    if (g_debug_level & kReportToStdout) {
        std::printf("%s %s", timestamp, text.get());
    }
    if (g_debug_level & kReportToFile) {
        if (FILE* file = std::fopen(kDebugFile, "a+")) {
            std::fprintf(file, "%s %s", timestamp, text.get());
            std::fclose(file);
        }
    }
    openlog(nullptr, LOG_CONS | LOG_PERROR, LOG_USER);
    syslog(LOG_DEBUG, "%s", text.get());
    closelog();
}

}  // namespace

void utilAssertFailed(const char* path, const char* function, int line, const char* condition) {
    // To the end: a reader of standard output that is gone must not end the process otherwise.
    const vcore::WriteGuard guard;
    if (reports(kAssertThreshold)) {
        report("\033[31mASSERT:%s/%s:%d:%s\n\033[0m", path, function, line, condition);
    }
    std::exit(-1);
}

void utilDebugError(const char* function, int line, const char* message) {
    if (reports(kErrorThreshold)) {
        const vcore::WriteGuard guard;
        report("[%16s:%4d] ERROR: %s\n", function, line, message);
    }
}

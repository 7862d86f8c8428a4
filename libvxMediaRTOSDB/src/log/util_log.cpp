#include <mediacheckd/vxMediaRTOSDB/util_log.h>

#include <syslog.h>

#include <cstdarg>
#include <cstddef>
#include <cstdio>

uint32_t g_logLevel = UTIL_LOG_ERROR;

namespace {

constexpr const char* kLevelNames[] = {
    "UTIL_LOG_OFF  ", "UTIL_LOG_FATAL", "UTIL_LOG_ERROR", "UTIL_LOG_WARN ",
    "UTIL_LOG_DEBUG", "UTIL_LOG_INFO ", "UTIL_LOG_TRACE",
};

constexpr size_t kBufferSize = 441;
constexpr size_t kMessageEnd = 350;  // level name, colon, message and terminator
constexpr size_t kTextEnd = 440;     // the buffer's last byte stays zero
constexpr size_t kCutPlaceSize = 91;

}  // namespace

void util_log_print(int level, int line, const char* file, const char* format, ...) {
    char buffer[kBufferSize] = {};
    const auto prefix = static_cast<size_t>(
        std::snprintf(buffer, kMessageEnd, "%s:", kLevelNames[static_cast<size_t>(level)]));

    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(buffer + prefix, kMessageEnd - prefix, format, arguments);
    va_end(arguments);

    const bool fitted = length >= 0 && static_cast<size_t>(length) < kMessageEnd - prefix;
    const size_t end = fitted ? prefix + static_cast<size_t>(length) : kMessageEnd - 1;
    const size_t room = fitted ? kTextEnd - end : kCutPlaceSize;
    const int place = std::snprintf(buffer + end, room, " @%s:%d", file, line);
    if (place < 0 || static_cast<size_t>(place) >= room) {
        std::snprintf(buffer + end, room, " ");
    }

    buffer[kBufferSize - 1] = '\0';
    syslog(LOG_ERR, "%s", buffer);
}

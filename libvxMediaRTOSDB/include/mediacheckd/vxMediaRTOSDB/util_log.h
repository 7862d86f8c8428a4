// The library's log: lines go to the system log when g_logLevel reaches their level.
#pragma once

#include <cstdint>

enum UtilLogLevel : uint32_t {
    UTIL_LOG_OFF = 0,
    UTIL_LOG_FATAL = 1,
    UTIL_LOG_ERROR = 2,
    UTIL_LOG_WARN = 3,
    UTIL_LOG_DEBUG = 4,
    UTIL_LOG_INFO = 5,
    UTIL_LOG_TRACE = 6,
};

extern "C" {
#pragma GCC visibility push(default)

// A line is logged when this is at least the line's level. Starts at UTIL_LOG_ERROR.
extern uint32_t g_logLevel;

// Sends one line to the system log at priority LOG_ERR: the level's name, a colon, the message,
// then " @file:line", or a blank where that does not fit. Level name and message together are cut
// at 349 characters. level: 0 to 6. file: the base name of the caller's source file.
void util_log_print(int level, int line, const char* file, const char* format, ...)
    __attribute__((format(printf, 4, 5)));

#pragma GCC visibility pop
}

// Logs a line, with the place it comes from, when g_logLevel is at least level.
#define UTIL_LOG(level, ...)                                                               \
    do {                                                                                   \
        if (g_logLevel >= (level))                                                         \
            util_log_print(static_cast<int>(level), __LINE__, __FILE_NAME__, __VA_ARGS__); \
    } while (0)

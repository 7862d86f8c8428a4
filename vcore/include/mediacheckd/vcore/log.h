// How the daemon's code writes a log line: level and tag in one word, nothing without a logger.
//
//   VLOG_ERROR("match returned %d\n", result);
//
// The format is a literal; the compiler checks it against the arguments, which are evaluated only
// when there is a logger.
#pragma once

#include <mediacheckd/vcore/logger.h>

#define VLOG_ERROR(...) VLOG_LINE(vcore::kLevelError, "  [ERROR]: " __VA_ARGS__)
#define VLOG_WARNING(...) VLOG_LINE(vcore::kLevelWarning, "[WARNING]: " __VA_ARGS__)
#define VLOG_INFO(...) VLOG_LINE(vcore::kLevelInfo, "   [INFO]: " __VA_ARGS__)
#define VLOG_NOISE(...) VLOG_LINE(vcore::kLevelNoise, "  [NOISE]: " __VA_ARGS__)

// Whether lines of the level are written; spares a loop of many lines that are not.
#define VLOG_PASSES(level) vcore::daemonLinePasses(level)

#define VLOG_LINE(level, ...)                                                 \
    do {                                                                      \
        if (vcore::Logger* const currentLogger = vcore::Logger::get()) {      \
            currentLogger->log(vcore::kCategoryDaemon, (level), __VA_ARGS__); \
        }                                                                     \
    } while (false)

namespace vcore {

inline bool daemonLinePasses(std::uint32_t level) {
    const Logger* const logger = Logger::get();
    return logger != nullptr && logger->passes(kCategoryDaemon, level);
}

}  // namespace vcore

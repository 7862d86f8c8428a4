// The process-wide logger.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include <mediacheckd/vcore/log_sink.h>
#include <mediacheckd/vcore/mutex.h>

// Other components find these by name.
#pragma GCC visibility push(default)

namespace vcore {

// Levels: one bit each, the lower the more severe.
inline constexpr std::uint32_t kLevelError = 1;
inline constexpr std::uint32_t kLevelWarning = 2;
inline constexpr std::uint32_t kLevelInfo = 8;
inline constexpr std::uint32_t kLevelNoise = 16;
inline constexpr std::uint32_t kLevelTrace = 32;

// The category of every line of the daemon.
inline constexpr std::uint32_t kCategoryDaemon = 3;

// The one logger of the process, a lock and a log sink. Lines of different threads never mix. The
// child of a fork may log as its parent does, whatever other threads were writing. The macros of
// mediacheckd/vcore/log.h are the usual way to write a line.
class Logger {
  public:
    // Makes the logger, or reconfigures the one there is.
    // level, levelMask, categoryMask: the filters of log_sink_vprintf. outputs: mask of LOG_OUT_*.
    // path: the log file, opened for appending; empty for none. Where it does not open, the other
    // outputs go on. Without memory for a logger there is none.
    static void init(std::uint32_t level, std::uint32_t levelMask, std::uint32_t categoryMask,
                     std::uint32_t outputs, const std::string& path);

    // Replaces the logger by one that writes to a sink of the caller's, which must outlive it; null
    // for one that writes nothing. The earlier logger is deleted: nobody may be using it.
    static void attach(log_sink_t* sink);

    // The logger, or null before init and attach.
    static Logger* get() { return sDebugLog.load(std::memory_order_acquire); }

    virtual ~Logger();
    Logger(const Logger&) = delete;
    Logger& operator=(const Logger&) = delete;

    // Writes one line. Returns the result of log_sink_vprintf, or 0 without a sink.
    int log(std::uint32_t category, std::uint32_t level, const char* format, ...)
        __attribute__((format(printf, 4, 5)));

    // Tells whether the filters let such a line pass: one question before a loop of many lines.
    bool passes(std::uint32_t category, std::uint32_t level) const;

    // Takes over new settings, as init does. The log file is reopened only when its path changes;
    // without a sink nothing happens.
    void configure(std::uint32_t level, std::uint32_t levelMask, std::uint32_t categoryMask,
                   std::uint32_t outputs, const std::string& path);

    // Closes the log file until truncateFile or a new path. Returns 0, also when none is set.
    int closeFile();

    // Empties the log file and goes on writing to it. Returns 0, also when no log file is set, or 1
    // when the file does not open; later lines do not reach it then.
    int truncateFile();

  private:
    Logger(std::uint32_t level, std::uint32_t levelMask, std::uint32_t categoryMask,
           std::uint32_t outputs, const std::string& path);
    explicit Logger(log_sink_t* borrowedSink);

    void setFilters(std::uint32_t level, std::uint32_t levelMask, std::uint32_t categoryMask);
    bool hasFile() const { return mSink != nullptr && !mPath.empty(); }

    log_sink_t* mSink;
    std::string mPath;
    bool mBorrowed;

    // Never destroyed: destructors of globals and threads that are still there at exit may log.
    union Lock {
        Lock();
        ~Lock() {}
        Mutex mutex;
    };

    static Lock sMutex;
    static std::atomic<Logger*> sDebugLog;
};

}  // namespace vcore

#pragma GCC visibility pop

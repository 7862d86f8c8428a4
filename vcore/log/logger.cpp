#include <mediacheckd/vcore/logger.h>

#include <new>

#include "vcore/log/log_sink_private.h"

namespace vcore {

Logger::Lock Logger::sMutex;
std::atomic<Logger*> Logger::sDebugLog;

// A fork waits for the line that is being written. The child has a lock of its own, since it is not
// the thread that holds its parent's.
Logger::Lock::Lock() : mutex() {
    pthread_atfork([] { sMutex.mutex.lock(); }, [] { sMutex.mutex.unlock(); },
                   [] { sys_mutex_init(sMutex.mutex.storage(), nullptr); });
}

void Logger::init(std::uint32_t level, std::uint32_t levelMask, std::uint32_t categoryMask,
                  std::uint32_t outputs, const std::string& path) {
    const AutoLock lock(&sMutex.mutex);
    if (Logger* const logger = get()) {
        logger->configure(level, levelMask, categoryMask, outputs, path);
    } else {
        sDebugLog = new (std::nothrow) Logger(level, levelMask, categoryMask, outputs, path);
    }
}

void Logger::attach(log_sink_t* sink) {
    const AutoLock lock(&sMutex.mutex);
    delete sDebugLog.exchange(new Logger(sink));
}

Logger::Logger(std::uint32_t level, std::uint32_t levelMask, std::uint32_t categoryMask,
               std::uint32_t outputs, const std::string& path)
    : mSink(nullptr), mPath(path), mBorrowed(false) {
    mSink = log_sink_create();
    if (mSink == nullptr) {
        return;
    }
    log_sink_set_outputs(mSink, outputs);
    log_sink_open_file(mSink, mPath.c_str(), "a");
    setFilters(level, levelMask, categoryMask);
}

Logger::Logger(log_sink_t* borrowedSink) : mSink(borrowedSink), mBorrowed(true) {}

Logger::~Logger() {
    if (!mBorrowed) {
        log_sink_destroy(mSink);
    }
}

int Logger::log(std::uint32_t category, std::uint32_t level, const char* format, ...) {
    // Most lines end here, without the lock.
    if (mSink == nullptr || (format != nullptr && !passesFilters(*mSink, category, level))) {
        return 0;
    }
    const AutoLock lock(&sMutex.mutex);
    va_list arguments;
    va_start(arguments, format);
    const int result = log_sink_vprintf(mSink, category, level, format, arguments);
    va_end(arguments);
    return result;
}

bool Logger::passes(std::uint32_t category, std::uint32_t level) const {
    return mSink != nullptr && passesFilters(*mSink, category, level);
}

void Logger::configure(std::uint32_t level, std::uint32_t levelMask, std::uint32_t categoryMask,
                       std::uint32_t outputs, const std::string& path) {
    const AutoLock lock(&sMutex.mutex);
    if (mSink == nullptr) {
        return;
    }
    log_sink_set_outputs(mSink, outputs);
    if (path != mPath) {
        log_sink_close_file(mSink);
        if (!path.empty()) {
            log_sink_open_file(mSink, path.c_str(), "a");
        }
        mPath = path;
    }
    setFilters(level, levelMask, categoryMask);
}

void Logger::setFilters(std::uint32_t level, std::uint32_t levelMask, std::uint32_t categoryMask) {
    log_sink_set_level(mSink, level);
    log_sink_set_level_mask(mSink, levelMask);
    log_sink_set_category_mask(mSink, categoryMask);
}

int Logger::closeFile() {
    const AutoLock lock(&sMutex.mutex);
    return hasFile() ? log_sink_close_file(mSink) : 0;
}

int Logger::truncateFile() {
    const AutoLock lock(&sMutex.mutex);
    if (!hasFile()) {
        return 0;
    }
    const int closed = log_sink_close_file(mSink);
    return closed | log_sink_open_file(mSink, mPath.c_str(), "w");
}

}  // namespace vcore

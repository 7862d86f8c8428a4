// The time a query takes, for the log.
#pragma once

#include <sys/time.h>

#include "libvxMediaRTOSDB/src/util_log.h"

class ElapsedTime {
  public:
    ElapsedTime() { gettimeofday(&mStart, nullptr); }

    // Returns the time since construction.
    [[nodiscard]] timeval get() const {
        timeval now;
        gettimeofday(&now, nullptr);
        timeval elapsed;
        timersub(&now, &mStart, &elapsed);
        return elapsed;
    }

  private:
    timeval mStart;
};

// Logs how long the named operation took.
inline void logElapsed(const char* name, const ElapsedTime& elapsed) {
    const timeval time = elapsed.get();
    UTIL_LOG(UTIL_LOG_DEBUG, "%s time %lu sec, %lu usec\n", name,
             static_cast<unsigned long>(time.tv_sec), static_cast<unsigned long>(time.tv_usec));
}

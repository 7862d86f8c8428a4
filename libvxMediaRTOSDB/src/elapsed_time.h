// The time a query takes, for the log.
#pragma once

#include <sys/time.h>

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

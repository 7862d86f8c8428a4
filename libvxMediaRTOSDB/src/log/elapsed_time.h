// The time a query takes, for the log.
#pragma once

#include <sys/time.h>

class ElapsedTime {
  public:
    // As the log's formats take it.
    struct Reading {
        unsigned long seconds;
        unsigned long microseconds;
    };

    ElapsedTime() { gettimeofday(&mStart, nullptr); }

    // Returns the time since construction.
    [[nodiscard]] Reading read() const {
        timeval now;
        gettimeofday(&now, nullptr);
        timeval elapsed;
        timersub(&now, &mStart, &elapsed);
        return {static_cast<unsigned long>(elapsed.tv_sec),
                static_cast<unsigned long>(elapsed.tv_usec)};
    }

  private:
    timeval mStart;
};

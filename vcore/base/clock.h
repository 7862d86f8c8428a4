// The real-time clock, and the absolute deadline of a wait that is given in milliseconds.
#pragma once

#include <sys/time.h>

#include <ctime>

namespace vcore {

// A clock that fails, as one behind 2038 does where seconds have 32 bits, reads 0.
inline timeval realTime() {
    timeval now{};
    if (gettimeofday(&now, nullptr) != 0) {
        now = {};
    }
    return now;
}

inline timespec deadlineAfter(const timeval& now, int milliseconds) {
    timespec deadline{};
    deadline.tv_sec = now.tv_sec + milliseconds / 1000;
    deadline.tv_nsec = static_cast<long>(now.tv_usec) * 1000 + milliseconds % 1000 * 1000000L;
    while (deadline.tv_nsec > 999999999) {
        deadline.tv_nsec -= 1000000000;
        ++deadline.tv_sec;
    }
    return deadline;
}

}  // namespace vcore

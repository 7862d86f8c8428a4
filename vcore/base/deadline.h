// The absolute deadline of a wait that is given in milliseconds.
#pragma once

#include <sys/time.h>

#include <ctime>

inline timespec deadlineAfter(const timeval& now, int milliseconds) {
    timespec deadline{};
    deadline.tv_sec = now.tv_sec + milliseconds / 1000;
    deadline.tv_nsec = now.tv_usec * 1000 + (milliseconds % 1000) * 1000000L;
    while (deadline.tv_nsec > 999999999) {
        deadline.tv_nsec -= 1000000000;
        ++deadline.tv_sec;
    }
    return deadline;
}

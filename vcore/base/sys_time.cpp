#include <mediacheckd/vcore/sys_time.h>

#include <ctime>

int sys_sleep_ms(unsigned milliseconds) {
    // In seconds and a rest: as microseconds, more than 71 minutes do not fit 32 bits.
    timespec duration{};
    duration.tv_sec = static_cast<time_t>(milliseconds / 1000);
    duration.tv_nsec = static_cast<long>(milliseconds % 1000) * 1000000;
    nanosleep(&duration, nullptr);
    return 0;
}

int sys_gettimeofday(timeval* tv, struct timezone* tz) {
    return tv == nullptr ? 1 : gettimeofday(tv, tz);
}

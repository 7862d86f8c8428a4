// Sleep and clock.
#pragma once

#include <sys/time.h>

struct timezone;  // not declared in strict C

#ifdef __cplusplus
extern "C" {
#endif

// Other components find these by name.
#pragma GCC visibility push(default)

// Sleeps for milliseconds, less when a signal handler runs meanwhile. Returns 0.
int sys_sleep_ms(unsigned milliseconds);

// Reads the real-time clock; tz may be null. Returns 0, or 1 without tv.
int sys_gettimeofday(struct timeval* tv, struct timezone* tz);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif

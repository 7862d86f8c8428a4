// Measures how long something takes, with the cost of reading the clock taken off.
#pragma once

#include <cstdint>

// Other components find this by name.
#pragma GCC visibility push(default)

// Times are microseconds of the wall clock modulo 2 to the 32nd: spans of up to 71 minutes.
class Stopwatch {
  public:
    // What control does, as a mask; carried out in this order.
    static constexpr uint32_t kCalibrate = 1;  // measure the cost of reading the clock
    static constexpr uint32_t kClear = 2;      // forget the accumulated time
    static constexpr uint32_t kStart = 4;
    static constexpr uint32_t kStop = 8;       // accumulate; the result is the time since the start
    static constexpr uint32_t kTotal = 16;     // the result is the accumulated time, up to now
    static constexpr uint32_t kOverhead = 32;  // the result is the cost of reading the clock

    // Returns the result of the last of the flags that have one, in seconds, else 0.
    double control(uint32_t flags);

  private:
    uint32_t mOverhead = 0;
    uint32_t mStart = 0;
    uint32_t mStop = 0;
    uint32_t mAccumulated = 0;
    uint32_t mFlags = 0;  // bit 0 calibrated, bit 1 running
};
static_assert(sizeof(Stopwatch) == 20);

#pragma GCC visibility pop

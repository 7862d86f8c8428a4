#include <mediacheckd/medialist/stopwatch.h>

#include <sys/time.h>

#include <algorithm>
#include <limits>

namespace {

constexpr uint32_t kMicrosPerSecond = 1'000'000;
constexpr int kCalibrationRounds = 1001;

constexpr uint32_t kCalibrated = 1;
constexpr uint32_t kRunning = 2;

uint32_t now() {
    timeval time{};
    gettimeofday(&time, nullptr);
    return static_cast<uint32_t>(time.tv_sec) * kMicrosPerSecond +
           static_cast<uint32_t>(time.tv_usec);
}

double seconds(uint32_t micros) {
    return static_cast<double>(micros) / kMicrosPerSecond;
}

uint32_t clockOverhead() {
    uint32_t smallest = std::numeric_limits<uint32_t>::max();
    for (int i = 0; i < kCalibrationRounds; ++i) {
        now();  // brings the clock's code and data into the cache
        const uint32_t before = now();
        smallest = std::min(smallest, now() - before);
    }
    return smallest;
}

}  // namespace

double Stopwatch::control(uint32_t flags) {
    double result = 0;
    if ((flags & kCalibrate) != 0) {
        mOverhead = clockOverhead();
        mFlags |= kCalibrated;
    }
    if ((flags & kClear) != 0) {
        mAccumulated = 0;
    }
    if ((flags & kStart) != 0) {
        mStart = now();
        mFlags |= kRunning;
    }
    if ((flags & kStop) != 0) {
        mStop = now();
        const uint32_t elapsed = mStop - mStart - mOverhead;
        mAccumulated += elapsed;
        mFlags ^= kRunning;
        result = seconds(elapsed);
    }
    if ((flags & kTotal) != 0) {
        const bool running = (mFlags & kRunning) != 0;
        result = seconds(mAccumulated + (running ? now() - mStart - mOverhead : 0));
    }
    if ((flags & kOverhead) != 0) {
        result = seconds(mOverhead);
    }
    return result;
}

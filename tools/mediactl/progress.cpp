#include "tools/mediactl/progress.h"

#include <unistd.h>

#include <chrono>
#include <cstdio>

#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace mediactl {

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kBetween{100};

Clock::time_point due = Clock::now() + std::chrono::seconds(1);
uint32_t exchanges = 0;
uint32_t itemsDone = 0;
uint32_t itemsTotal = 0;
bool shown = false;

bool wanted() {
    static const bool terminal = isatty(STDERR_FILENO) != 0;
    return terminal && g_logLevel < UTIL_LOG_DEBUG;
}

}  // namespace

void showProgress() {
    const auto now = wanted() ? Clock::now() : Clock::time_point::min();
    if (now < due) {
        return;
    }
    due = now + kBetween;
    shown = true;
    if (itemsTotal != 0) {
        std::fprintf(stderr, "\r\033[K%u of %u items", itemsDone, itemsTotal);
    } else {
        std::fprintf(stderr, "\r\033[K%u exchanges with the database", exchanges);
    }
}

void noteItems(uint32_t done, uint32_t total) {
    itemsDone = done;
    itemsTotal = total;
    showProgress();
}

void noteExchange() {
    ++exchanges;
    showProgress();
}

void hideProgress() {
    if (shown) {
        std::fputs("\r\033[K", stderr);
        shown = false;
    }
}

}  // namespace mediactl

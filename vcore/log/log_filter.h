// The filters of a log sink.
#pragma once

#include <mediacheckd/vcore/log_sink.h>

inline bool passesFilters(const log_sink_t& sink, uint32_t category, uint32_t level) {
    if ((category & sink.categoryMask) == 0) {
        return false;
    }
    return level <= sink.level || (level & sink.levelMask) != 0;
}

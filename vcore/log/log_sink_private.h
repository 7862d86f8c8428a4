// What the files of the log sink share: its filters and its list of callbacks.
#pragma once

#include <vector>

#include <mediacheckd/vcore/log_sink.h>

struct log_callback_list {
    std::vector<log_callback_t> entries;
};

namespace vcore {

inline bool passesFilters(const log_sink_t& sink, uint32_t category, uint32_t level) {
    if ((category & sink.categoryMask) == 0) {
        return false;
    }
    return level <= sink.level || (level & sink.levelMask) != 0;
}

}  // namespace vcore

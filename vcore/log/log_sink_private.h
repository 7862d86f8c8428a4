// What the files of the log sink share: its filters and its list of callbacks.
#pragma once

#include <atomic>
#include <vector>

#include <mediacheckd/vcore/log_sink.h>

struct log_callback_list {
    std::vector<log_callback_t> entries;
};

namespace vcore {

// A setting of the sink, which is read while another thread sets it.
inline std::atomic_ref<uint32_t> shared(const uint32_t& setting) {
    return std::atomic_ref(const_cast<uint32_t&>(setting));
}

inline bool passesFilters(const log_sink_t& sink, uint32_t category, uint32_t level) {
    const auto now = [](const uint32_t& setting) {
        return shared(setting).load(std::memory_order_relaxed);
    };
    if ((category & now(sink.categoryMask)) == 0) {
        return false;
    }
    return level <= now(sink.level) || (level & now(sink.levelMask)) != 0;
}

}  // namespace vcore

// The logger's lines, without their timestamps, as long as this lives.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "vcore/logger.h"

struct CapturedLog {
    static inline std::vector<std::string> lines;
    log_sink_t* sink = log_sink_create();

    CapturedLog() {
        log_sink_set_outputs(sink, LOG_OUT_CALLBACK);
        log_sink_set_level(sink, vcore::kLevelTrace);
        log_sink_set_category_mask(sink, 0xFF);
        log_sink_add_callback(
            sink, [](const char* line) { lines.emplace_back(std::strchr(line, ' ') + 1); });
        lines.clear();
        vcore::Logger::attach(sink);
    }
    ~CapturedLog() {
        vcore::Logger::attach(nullptr);
        log_sink_destroy(sink);
    }
    static bool has(const std::string& line) {
        return std::find(lines.begin(), lines.end(), line + "\n") != lines.end();
    }
};

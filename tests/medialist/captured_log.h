// The logger's lines, without their timestamps, as long as this lives.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "vcore/logger.h"

class CapturedLog {
  public:
    CapturedLog() : mSink(log_sink_create()) {
        log_sink_set_outputs(mSink, LOG_OUT_CALLBACK);
        log_sink_set_level(mSink, vcore::kLevelTrace);
        log_sink_set_category_mask(mSink, 0xFF);
        log_sink_add_callback(mSink, [](const char* line) {
            sLines.emplace_back(std::strchr(line, ' ') + 1);
            sLines.back().pop_back();
        });
        sLines.clear();
        vcore::Logger::attach(mSink);
    }
    ~CapturedLog() {
        vcore::Logger::attach(nullptr);
        log_sink_destroy(mSink);
    }
    CapturedLog(const CapturedLog&) = delete;
    CapturedLog& operator=(const CapturedLog&) = delete;

    static const std::vector<std::string>& lines() { return sLines; }
    static bool has(const std::string& line) {
        return std::find(sLines.begin(), sLines.end(), line) != sLines.end();
    }

  private:
    log_sink_t* mSink;
    static inline std::vector<std::string> sLines;
};

// A log sink that passes every line and keeps what it writes.
#pragma once

#include <cstdio>
#include <string>
#include <utility>

#include <mediacheckd/vcore/log_sink.h>

class CapturedSink {
  public:
    CapturedSink() {
        log_sink_set_outputs(mSink, LOG_OUT_CALLBACK);
        log_sink_set_level(mSink, ~0U);
        log_sink_set_category_mask(mSink, 3);
        log_sink_add_callback(mSink, [](const char* line) { keep("", line); });
        sWritten.clear();
    }
    ~CapturedSink() { log_sink_destroy(mSink); }

    operator log_sink_t*() const { return mSink; }

    // Keeps a line after the name of its output, without its timestamp if that is well formed.
    static void keep(const char* output, const std::string& line) {
        int end = 0;
        sscanf(line.c_str(), "%*4d-%*2d-%*2dT%*2d:%*2d:%*2d.%*3d%n", &end);
        sWritten += output + line.substr(end == 23 && line[23] == ' ' ? 24 : 0);
        sLine = line;
    }

    // Returns what was kept since the last call.
    static std::string take() { return std::exchange(sWritten, ""); }
    static const std::string& lastLine() { return sLine; }

  private:
    static inline std::string sWritten;
    static inline std::string sLine;
    log_sink_t* const mSink = log_sink_create();
};

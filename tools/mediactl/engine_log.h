// The log of the media-list engine, as the tool shows it.
#pragma once

#include <mediacheckd/vcore/log_sink.h>

namespace mediactl {

// The engine's lines go to standard error, as many as the tool's log level asks for.
class EngineLog {
  public:
    EngineLog();
    ~EngineLog();
    EngineLog(const EngineLog&) = delete;
    EngineLog& operator=(const EngineLog&) = delete;

    // Shows on a terminal how far a count is, until the next end. Elsewhere, and at log levels that
    // show every page anyhow, it does nothing.
    void beginProgress();
    void endProgress();

  private:
    log_sink_t* mSink;
    bool mProgress = false;
};

}  // namespace mediactl

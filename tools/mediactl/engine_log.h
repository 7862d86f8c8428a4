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

  private:
    log_sink_t* mSink;
};

}  // namespace mediactl

#include "tools/mediactl/engine_log.h"

#include <mediacheckd/vcore/logger.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace mediactl {

namespace {

constexpr uint32_t kAllCategories = 0xFF;

// The engine's level for the library's.
uint32_t engineLevel(uint32_t libraryLevel) {
    if (libraryLevel >= UTIL_LOG_DEBUG) {
        return vcore::kLevelTrace;
    }
    return libraryLevel >= UTIL_LOG_ERROR ? vcore::kLevelWarning : 0;
}

}  // namespace

EngineLog::EngineLog() : mSink(log_sink_create()) {
    log_sink_set_outputs(mSink, LOG_OUT_STDERR);
    log_sink_set_level(mSink, engineLevel(g_logLevel));
    log_sink_set_category_mask(mSink, kAllCategories);
    vcore::Logger::attach(mSink);
}

EngineLog::~EngineLog() {
    vcore::Logger::attach(nullptr);
    log_sink_destroy(mSink);
}

}  // namespace mediactl

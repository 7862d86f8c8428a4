#include "tools/mediactl/engine_log.h"

#include <unistd.h>

#include <cstdio>
#include <cstring>

#include <mediacheckd/vcore/logger.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>
#include <mediacheckd/vxMediaRTOSDB/zep_queries.h>

namespace mediactl {

namespace {

constexpr uint32_t kAllCategories = 0xFF;
constexpr char kClearLine[] = "\r\033[K";

uint32_t totalItems = 0;

// The engine's level for the library's.
uint32_t engineLevel(uint32_t libraryLevel) {
    if (libraryLevel >= UTIL_LOG_DEBUG) {
        return vcore::kLevelTrace;
    }
    return libraryLevel >= UTIL_LOG_ERROR ? vcore::kLevelWarning : 0;
}

// Reads the progress off the line with which the engine asks for a page.
void showProgress(const char* line) {
    uint32_t counted = 0;
    const char* const page = std::strstr(line, "[NOISE]: [ZML]: Calling dbGetZEP");
    if (page == nullptr) {
        std::fprintf(stderr, "%s%s", kClearLine, line);
    } else if (std::sscanf(page, "%*s %*s %*s %*s index=%u", &counted) == 1) {
        std::fprintf(stderr, "%s%u of %u items", kClearLine, counted, totalItems);
    }
}

// The items of both lists; 0 where the database does not say.
uint32_t askTotal() {
    uint32_t total = 0;
    for (const auto list : {dbGetZEPItems, dbGetZEPSessionFileList}) {
        uint32_t session = 0;
        uint32_t entries = 0;
        if (list(1, 0, nullptr, nullptr, nullptr, nullptr, nullptr, &session, &entries) >= 0) {
            total += entries;
        }
    }
    return total;
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

void EngineLog::beginProgress() {
    mProgress = isatty(STDERR_FILENO) != 0 && g_logLevel < UTIL_LOG_DEBUG;
    if (!mProgress) {
        return;
    }
    totalItems = askTotal();
    log_sink_add_callback(mSink, showProgress);
    log_sink_set_outputs(mSink, LOG_OUT_CALLBACK);
    log_sink_set_level_mask(mSink, vcore::kLevelNoise);
}

void EngineLog::endProgress() {
    if (!mProgress) {
        return;
    }
    log_sink_set_level_mask(mSink, 0);
    log_sink_set_outputs(mSink, LOG_OUT_STDERR);
    log_sink_remove_callback(mSink, showProgress);
    std::fputs(kClearLine, stderr);
    mProgress = false;
}

}  // namespace mediactl

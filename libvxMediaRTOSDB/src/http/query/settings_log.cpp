#include "libvxMediaRTOSDB/src/http/query/settings_log.h"

#include <mediacheckd/vxMediaRTOSDB/util_log.h>

void logSettings(const QuerySettings& settings) {
    UTIL_LOG(UTIL_LOG_DEBUG, "pSettings->filter = 0x%08x", settings.filter);
    UTIL_LOG(UTIL_LOG_DEBUG, "pSettings->rtosDBQueryOptions = 0x%08x", settings.rtosDBQueryOptions);
    UTIL_LOG(UTIL_LOG_DEBUG, "pSettings->newUploadStatus = 0x%08x", settings.newUploadStatus);
    UTIL_LOG(UTIL_LOG_DEBUG, "pSettings->dirName = '%s'", settings.dirName);
    UTIL_LOG(UTIL_LOG_DEBUG, "pSettings->fileName = '%s'", settings.fileName);
    UTIL_LOG(UTIL_LOG_DEBUG, "pSettings->whitelistMask = 0x%08x", settings.whitelistMask);
    UTIL_LOG(UTIL_LOG_DEBUG, "pSettings->unsupported = '%s'", settings.unsupported);
}

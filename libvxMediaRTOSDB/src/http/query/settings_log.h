// What a response is made from, for the log.
#pragma once

#include <mediacheckd/vxMediaRTOSDB/query_settings.h>

// Logs the settings, one field a line, at UTIL_LOG_DEBUG.
void logSettings(const QuerySettings& settings);

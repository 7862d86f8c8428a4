// Fills the words that every request starts with.
#pragma once

#include <cstdint>

#include "libvxMediaRTOSDB/src/db_checks.h"
#include "libvxMediaRTOSDB/src/db_requests.h"

inline void fillHeader(db_request_header* header, DbCommand command, uint32_t requestCount,
                       const void* token) {
    header->command_type = command;
    header->request_count = requestCount;
    header->token = tokenOf(token);
}

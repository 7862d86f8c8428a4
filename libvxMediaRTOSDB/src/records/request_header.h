// Fills the words that every request starts with.
#pragma once

#include <cstdint>

#include <mediacheckd/vxMediaRTOSDB/db_requests.h>

// Returns the tag that a request carries for a pointer: its low 32 bits.
inline uint32_t tokenOf(const void* pointer) {
    return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(pointer));
}

inline void fillHeader(db_request_header* header, DbCommand command, uint32_t requestCount,
                       const void* token) {
    header->command_type = command;
    header->request_count = requestCount;
    header->token = tokenOf(token);
}

#include "libvxMediaRTOSDB/src/log/hex_dump.h"

#include <cstdint>
#include <cstdio>

#include <mediacheckd/vxMediaRTOSDB/util_log.h>

void hexDump(Direction direction, const void* bytes, int length) {
    if (g_logLevel <= UTIL_LOG_INFO) {
        return;
    }
    std::printf(direction == Direction::kSent ? "\nSnd :" : "\nRcv :");
    const auto* byte = static_cast<const uint8_t*>(bytes);
    for (int i = 0; i < length; ++i) {
        if (i % 32 == 0) {
            std::printf("\n[%5.5d/%5.5d]:", i, length);
        }
        std::printf(" %02x", byte[i]);
        for (int group = 4; group <= 16; group *= 2) {
            if (i % group == group - 1) {
                std::printf(" ");
            }
        }
    }
    std::printf("\n");
}

#include "bench/memory_channel.h"

#include <cstring>

#include <mediacheckd/platform/csi.h>
#include <mediacheckd/platform/debug_level.h>
#include <mediacheckd/platform/vxipc.h>

std::vector<std::vector<uint8_t>> g_memoryChannelPages;
uint32_t g_memoryChannelPageSize = 1;

uint32_t g_debug_level = 0;

static const std::vector<uint8_t>* sReply = nullptr;

int vxIpcInit(const char*, vxIpcEndpoint*) {
    return 0;
}

int vxIpcSend(vxIpcEndpoint*, const void* message, int) {
    uint32_t start;
    std::memcpy(&start, static_cast<const uint8_t*>(message) + 12, sizeof start);
    const size_t page = start / g_memoryChannelPageSize;
    if (page >= g_memoryChannelPages.size()) {
        return -1;
    }
    sReply = &g_memoryChannelPages[page];
    return 0;
}

int vxIpcReceive(vxIpcEndpoint*, void* buffer, int) {
    std::memcpy(buffer, sReply->data(), sReply->size());
    return static_cast<int>(sReply->size());
}

void vxIpcDestroy(vxIpcEndpoint*) {}

int csi_get(int, uint32_t, uint32_t*, void*) {
    return -1;
}

// A channel whose replies lie in memory: list pages, one for every g_memoryChannelPageSize items.
#pragma once

#include <cstdint>
#include <vector>

// Linked in place of the platform. A request that asks for no page is not taken.
extern std::vector<std::vector<uint8_t>> g_memoryChannelPages;
extern uint32_t g_memoryChannelPageSize;

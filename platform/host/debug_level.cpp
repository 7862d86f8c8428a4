#include <mediacheckd/platform/debug_level.h>

uint32_t g_debug_level = 0;

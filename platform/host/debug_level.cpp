#include "platform/debug_level.h"

extern "C" uint32_t g_debug_level = 0;

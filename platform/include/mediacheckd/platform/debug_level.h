// The debug switch word of the camera's platform libraries; the system only reads it.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

// Bits 0 to 7: report level. Bit 29: reports go to the debug file. Bit 30: reports are printed.
extern uint32_t g_debug_level;

#ifdef __cplusplus
}
#endif

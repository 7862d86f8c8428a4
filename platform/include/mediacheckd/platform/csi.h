// The camera's settings service.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define CSI_MODEL_NUMBER 20

// Reads one setting into the caller's buffer of bufferSize bytes.
// lengthOut: receives the value's length in bytes.
// Returns 0, or an error code; after an error neither output is to be relied on.
int csi_get(int key, uint32_t bufferSize, uint32_t* lengthOut, void* buffer);

#ifdef __cplusplus
}
#endif

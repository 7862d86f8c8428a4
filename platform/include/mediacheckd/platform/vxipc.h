// The camera's message-passing library: whole messages over a named channel.
//
// One send carries one request, one receive yields one reply; nothing is framed, split or
// reassembled. A message is at most VX_IPC_MESSAGE_MAX bytes.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define VX_IPC_MESSAGE_MAX 1500
#define VX_IPC_ENDPOINT_SIZE 188

// One endpoint of a channel. The caller owns the record; only the library reads or writes it
// between vxIpcInit and vxIpcDestroy.
typedef struct vxIpcEndpoint {
    uint32_t opaque[VX_IPC_ENDPOINT_SIZE / 4];
} vxIpcEndpoint;

// Opens an endpoint on the channel.
// channel: its name, zero-terminated, not kept. endpoint: zero-filled by the caller.
// Returns 0 or a positive number when ready, a negative number on failure; after a failure there
// is nothing to destroy.
int vxIpcInit(const char* channel, vxIpcEndpoint* endpoint);

// Sends one whole message of length bytes; the bytes are not kept.
// Returns a negative number on failure.
int vxIpcSend(vxIpcEndpoint* endpoint, const void* message, int length);

// Receives one whole message into the caller's buffer of size bytes.
// Returns the message's length, zero included, or a negative number on failure; a message longer
// than size is a failure.
int vxIpcReceive(vxIpcEndpoint* endpoint, void* buffer, int size);

// Closes the endpoint.
void vxIpcDestroy(vxIpcEndpoint* endpoint);

#ifdef __cplusplus
}
#endif

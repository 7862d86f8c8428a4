// One connection to the media database and the exchange of one request for one response.
//
// A connection lives in the caller's frame for one query: rtosConnectionCtor, one or more
// exchanges, rtosConnectionDtor. No heap memory is used.
//
// A null argument of rtosCall or rtosConnectionRecv, a receive size of 0 and a negative send size
// are programming errors: they end the process with exit status 255.
#pragma once

#include <mediacheckd/platform/vxipc.h>

struct rtosConnection {
    vxIpcEndpoint endpoint;
};
static_assert(sizeof(rtosConnection) == VX_IPC_ENDPOINT_SIZE);

extern "C" {
#pragma GCC visibility push(default)

// Opens a connection on the channel "rtos_media_db".
// Returns 0 or a positive number when it is ready, else the channel's negative result, which is
// logged; after a failure there is nothing to destroy.
[[nodiscard]] int rtosConnectionCtor(rtosConnection* pRtosConn);

// Closes the connection and zero-fills its record.
void rtosConnectionDtor(rtosConnection* pRtosConn);

// Sends one request of szSrc bytes, not negative. Dumps it at UTIL_LOG_TRACE.
// Returns the channel's result, negative on failure.
[[nodiscard]] int rtosConnectionSend(rtosConnection* pRtosConn, const void* pSrc, int szSrc);

// Receives one response into pDest, of szDest bytes, after clearing it: bytes that do not come read
// as zero. A negative szDest clears nothing and goes to the channel as it is. Dumps what came at
// UTIL_LOG_TRACE. Returns the number of bytes received, zero included, or the channel's negative
// result.
[[nodiscard]] int rtosConnectionRecv(rtosConnection* pRtosConn, void* pDest, int szDest);

// Exchanges a request of requestLength bytes for one response. A failed attempt is followed by a
// pause of 100 ms and repeated, up to 11 attempts.
// pResp: 1500 bytes, cleared before each receive.
// Returns the number of bytes received, zero included, or -1 when every attempt failed.
[[nodiscard]] int rtosCall(rtosConnection* pRtosConn, const void* pCmd, int requestLength,
                           void* pResp);

#pragma GCC visibility pop
}

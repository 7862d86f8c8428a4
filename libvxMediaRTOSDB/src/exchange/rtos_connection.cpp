#include <mediacheckd/vxMediaRTOSDB/rtos_connection.h>

#include <cstring>

#include "libvxMediaRTOSDB/src/exchange/retry_pause.h"
#include "libvxMediaRTOSDB/src/log/hex_dump.h"
#include "libvxMediaRTOSDB/src/log/util_assert.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

constexpr const char* kChannel = "rtos_media_db";
constexpr int kMaxAttempts = 11;

}  // namespace

int rtosConnectionCtor(rtosConnection* pRtosConn) {
    *pRtosConn = {};
    const int result = vxIpcInit(kChannel, &pRtosConn->endpoint);
    if (result < 0) {
        UTIL_LOG(UTIL_LOG_ERROR, "vxIpcInit fail, ret %d\n", result);
    }
    return result;
}

void rtosConnectionDtor(rtosConnection* pRtosConn) {
    vxIpcDestroy(&pRtosConn->endpoint);
    *pRtosConn = {};
}

int rtosConnectionSend(rtosConnection* pRtosConn, const void* pSrc, int szSrc) {
    UTIL_ASSERT(0 <= szSrc);
    hexDump(Direction::kSent, pSrc, szSrc);
    return vxIpcSend(&pRtosConn->endpoint, pSrc, szSrc);
}

int rtosConnectionRecv(rtosConnection* pRtosConn, void* pDest, int szDest) {
    UTIL_ASSERT(pRtosConn);
    UTIL_ASSERT(pDest);
    UTIL_ASSERT(szDest);
    if (szDest > 0) {
        std::memset(pDest, 0, static_cast<size_t>(szDest));
    }
    const int received = vxIpcReceive(&pRtosConn->endpoint, pDest, szDest);
    hexDump(Direction::kReceived, pDest, received);
    return received;
}

int rtosCall(rtosConnection* pRtosConn, const void* pCmd, int requestLength, void* pResp) {
    UTIL_ASSERT(pRtosConn);
    UTIL_ASSERT(pCmd);
    UTIL_ASSERT(pResp);

    for (int attempt = 1; attempt <= kMaxAttempts; ++attempt) {
        const int sent = rtosConnectionSend(pRtosConn, pCmd, requestLength);
        if (sent < 0) {
            retryPause();
            UTIL_LOG(UTIL_LOG_ERROR, "error on IPC send, retrying, ret %d\n", sent);
            continue;
        }
        const int received = rtosConnectionRecv(pRtosConn, pResp, kResponseBufferSize);
        if (received >= 0) {
            return received;
        }
        retryPause();
        UTIL_LOG(UTIL_LOG_ERROR, "error on IPC received, retrying, bytesRead %d\n", received);
    }
    UTIL_LOG(UTIL_LOG_ERROR, "exhausted retries on IPC exchange, exiting\n");
    return -1;
}

#include "libvxMediaRTOSDB/src/files/direct_query.h"

#include "libvxMediaRTOSDB/src/exchange/db_checks.h"
#include "libvxMediaRTOSDB/src/log/hex_dump.h"
#include "libvxMediaRTOSDB/src/records/db_log.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/platform/vxipc.h>
#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

int DirectExchange::run(const void* request, size_t requestSize) {
    if (mConnection.result() < 0) {
        return mConnection.result();
    }
    if (!exchange(request, requestSize) ||
        !hasEntry(*static_cast<const db_request_header*>(request)) || !acceptsContent()) {
        return -1;
    }
    logResponse(*header());
    return 0;
}

bool DirectExchange::exchange(const void* request, size_t requestSize) {
    const auto size = static_cast<int>(requestSize);
    const int sent = vxIpcSend(&mConnection.get()->endpoint, request, size);
    if (sent < 0) {
        UTIL_LOG(UTIL_LOG_ERROR, mQuery.sendFailed, sent);
        return false;
    }
    hexDump(Direction::kSent, request, size);

    mReceived = rtosConnectionRecv(mConnection.get(), mBuffer.data(), kResponseBufferSize);
    UTIL_LOG(UTIL_LOG_DEBUG, mQuery.received, mReceived);
    const bool complete = mReceived >= static_cast<int>(mQuery.minimumResponse);
    if (!complete) {
        logTooShort();
    }
    return complete;
}

bool DirectExchange::hasEntry(const db_request_header& request) {
    db_response_header* response = header();
    if (response->status != 0) {
        UTIL_LOG(UTIL_LOG_WARN, "vxIpcReceive response status %d\n", signedWord(response->status));
    }
    checkToken(response->token, request);

    if (response->count_returned == 0) {
        UTIL_LOG(UTIL_LOG_ERROR, "vxIpcReceive response count_returned %d - returning -1\n",
                 signedWord(response->count_returned));
        return false;
    }
    if (response->count_returned > 1) {
        correctCount(request, response, UTIL_LOG_ERROR);
        UTIL_LOG(UTIL_LOG_ERROR, "vxIpcReceive response count_returned %d - using first\n",
                 signedWord(response->count_returned));
    }
    return true;
}

bool DirectExchange::acceptsContent() const {
    if (!mQuery.accepts) {
        return true;
    }
    const auto* item = answer().read<db_item_record>();
    if (mQuery.accepts(item->content_type)) {
        return true;
    }
    UTIL_LOG(UTIL_LOG_ERROR, mQuery.refused, uint32_t{item->content_type});
    return false;
}

RecordReader DirectExchange::answer() const {
    return RecordReader(std::span(mBuffer).first(static_cast<size_t>(mReceived)),
                        sizeof(db_response_header));
}

db_response_header* DirectExchange::header() {
    return reinterpret_cast<db_response_header*>(mBuffer.data());
}

int DirectExchange::finish(bool copied) {
    if (!copied) {
        logTooShort();
        return -1;
    }
    mConnection.close();
    const ElapsedTime::Reading time = mElapsed.read();
    UTIL_LOG(UTIL_LOG_DEBUG, "time %lu sec, %lu usec\n", time.seconds, time.microseconds);
    return 0;
}

void DirectExchange::logTooShort() const {
    UTIL_LOG(UTIL_LOG_ERROR, "error on IPC received %d, exiting\n", mReceived);
}

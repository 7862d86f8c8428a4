#include "libvxMediaRTOSDB/src/files/direct_query.h"

#include <array>

#include "libvxMediaRTOSDB/src/exchange/db_checks.h"
#include "libvxMediaRTOSDB/src/exchange/rtos_connection_guard.h"
#include "libvxMediaRTOSDB/src/log/elapsed_time.h"
#include "libvxMediaRTOSDB/src/log/hex_dump.h"
#include "libvxMediaRTOSDB/src/records/db_log.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/platform/vxipc.h>
#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

using ResponseBuffer = std::array<uint8_t, kResponseBufferSize>;

int refuseSize(int received) {
    UTIL_LOG(UTIL_LOG_ERROR, "error on IPC received %d, exiting\n", received);
    return -1;
}

// Returns the number of bytes received, at least the minimum, or -1.
int exchange(const DirectQuery& query, rtosConnection* connection, const void* request, int size,
             size_t minimum, ResponseBuffer& response) {
    const int sent = vxIpcSend(&connection->endpoint, request, size);
    if (sent < 0) {
        UTIL_LOG(UTIL_LOG_ERROR, query.sendFailed, sent);
        return -1;
    }
    hexDump(Direction::kSent, request, size);

    const int received = rtosConnectionRecv(connection, response.data(), kResponseBufferSize);
    UTIL_LOG(UTIL_LOG_DEBUG, query.received, received);
    return received >= static_cast<int>(minimum) ? received : refuseSize(received);
}

// Tells whether the response has an entry, and corrects its count.
bool hasEntry(const db_request_header& request, db_response_header* response) {
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

bool acceptsContent(const DirectQuery& query, RecordReader answer) {
    const auto* item = query.accepts ? answer.read<db_item_record>() : nullptr;
    if (!item || query.accepts(item->content_type)) {
        return true;
    }
    UTIL_LOG(UTIL_LOG_ERROR, query.refused, signedWord(item->content_type));
    return false;
}

}  // namespace

int runDirectQuery(const DirectQuery& query, const db_request_header& request, size_t requestSize,
                   size_t minimumAnswer, bool (*copy)(void* outputs, RecordReader answer),
                   void* outputs) {
    const ElapsedTime elapsed;
    RtosConnectionGuard connection;
    if (connection.result() < 0) {
        return connection.result();
    }
    ResponseBuffer response;
    const int received = exchange(query, connection.get(), &request, static_cast<int>(requestSize),
                                  sizeof(db_response_header) + minimumAnswer, response);
    if (received < 0) {
        return -1;
    }
    auto* header = reinterpret_cast<db_response_header*>(response.data());
    const RecordReader answer({response.data(), static_cast<size_t>(received)}, sizeof *header);
    if (!hasEntry(request, header) || !acceptsContent(query, answer)) {
        return -1;
    }
    logResponse(*header);
    if (!copy(outputs, answer)) {
        return refuseSize(received);
    }
    connection.close();
    const ElapsedTime::Reading time = elapsed.read();
    UTIL_LOG(UTIL_LOG_DEBUG, "time %lu sec, %lu usec\n", time.seconds, time.microseconds);
    return 0;
}

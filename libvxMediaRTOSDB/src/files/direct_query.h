// The frame of the direct queries: a connection of its own, one send, one receive without retry,
// and the checks that every answer goes through.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "libvxMediaRTOSDB/src/exchange/rtos_connection_guard.h"
#include "libvxMediaRTOSDB/src/log/elapsed_time.h"
#include "libvxMediaRTOSDB/src/records/record_reader.h"
#include "libvxMediaRTOSDB/src/records/request_header.h"
#include <mediacheckd/vxMediaRTOSDB/db_requests.h>
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>

// In what the direct queries differ, besides their request and what they copy.
struct DirectQuery {
    DbCommand command;
    const char* received;                             // the log's line for a receive
    size_t minimumResponse;                           // bytes
    bool (*accepts)(uint32_t contentType) = nullptr;  // null: the item is not looked at
    const char* refused = nullptr;                    // the log's line for other content
    const char* sendFailed = "error on IPC send %d\n";
};

class DirectExchange {
  public:
    explicit DirectExchange(const DirectQuery& query) : mQuery(query) {}

    // Sends the request, receives the response and checks it.
    // Returns 0 for a response to copy from, else what the query returns.
    // request: a whole request record.
    [[nodiscard]] int run(const void* request, size_t requestSize);

    // Reads what follows the response header.
    [[nodiscard]] RecordReader answer() const;

    // Ends the query. Returns 0 when its outputs have been copied, else, for a response that lacks
    // bytes, -1.
    [[nodiscard]] int finish(bool copied);

  private:
    [[nodiscard]] bool exchange(const void* request, size_t requestSize);
    [[nodiscard]] bool hasEntry(const db_request_header& request);
    [[nodiscard]] bool acceptsContent() const;
    [[nodiscard]] db_response_header* header();
    void logTooShort() const;

    const DirectQuery& mQuery;
    ElapsedTime mElapsed;
    RtosConnectionGuard mConnection;
    std::array<uint8_t, kResponseBufferSize> mBuffer;
    int mReceived = 0;
};

// Asks one direct query.
// request: its header is filled here, the rest by the caller.
// copy: called with a reader of what follows the response header; returns false, with the caller's
// outputs untouched, when a part to be copied did not come.
// Returns 0, the channel's negative result when no connection can be opened, or -1.
template <typename Request, typename Copy>
[[nodiscard]] int directQuery(const DirectQuery& query, Request request, Copy copy) {
    fillHeader(&request.header, query.command, 1, &request);
    DirectExchange exchange(query);
    const int result = exchange.run(&request, sizeof request);
    return result != 0 ? result : exchange.finish(copy(exchange.answer()));
}

// The frame of the direct queries: a connection of its own, one send, one receive without retry,
// and the checks that every answer goes through.
#pragma once

#include <cstddef>
#include <cstdint>
#include <tuple>

#include "libvxMediaRTOSDB/src/records/record_reader.h"
#include "libvxMediaRTOSDB/src/records/request_header.h"
#include <mediacheckd/vxMediaRTOSDB/db_requests.h>

// In what the direct queries differ, besides their request and what they copy.
struct DirectQuery {
    DbCommand command;
    const char* received;                             // the log's line for a receive
    bool (*accepts)(uint32_t contentType) = nullptr;  // null: the item is not looked at
    const char* refused = nullptr;                    // the log's line for other content
    const char* sendFailed = "error on IPC send %d\n";
};

// Asks one direct query and lets copy fill the outputs from what follows the response header.
// request: a whole request record, its header filled.
// minimumAnswer: bytes behind the response header without which an answer is refused.
// copy: returns false, with the outputs untouched, when a part to be copied did not come.
// Returns 0, the channel's negative result when no connection can be opened, or -1.
[[nodiscard]] int runDirectQuery(const DirectQuery& query, const db_request_header& request,
                                 size_t requestSize, size_t minimumAnswer,
                                 bool (*copy)(void* outputs, RecordReader answer), void* outputs);

// The same for a request whose header is filled here, the rest by the caller. An answer begins with
// the records, and copy is called with them and with a reader of what follows.
template <typename... Records, typename Request, typename Copy>
[[nodiscard]] int directQuery(const DirectQuery& query, Request request, Copy copy) {
    fillHeader(&request.header, query.command, 1, &request);
    return runDirectQuery(
        query, request.header, sizeof request, (sizeof(Records) + ...),
        [](void* outputs, RecordReader answer) {
            const std::tuple records{answer.read<Records>()...};
            return std::apply(
                [&](const auto*... record) {
                    return (*static_cast<Copy*>(outputs))(*record..., answer);
                },
                records);
        },
        &copy);
}

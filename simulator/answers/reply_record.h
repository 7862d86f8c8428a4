// Records in and out of messages.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <type_traits>
#include <vector>

#include <mediacheckd/vxMediaRTOSDB/db_responses.h>

namespace simulator {

using Message = std::vector<std::byte>;
using Request = std::span<const std::byte>;

// No message of the channel is longer.
inline constexpr std::size_t kMessageMax = kResponseBufferSize;

inline constexpr uint32_t kDatabaseVersion = 1;

// Statuses of a response. The database's clients tell only some numbers apart.
enum DbStatus : uint32_t {
    DB_STATUS_OK = 0,
    DB_STATUS_NOT_FOUND = 4,
    DB_STATUS_BAD_REQUEST = 5,
    DB_STATUS_UNKNOWN_COMMAND = 6,
};

// The record that a message consists of; none when the message has another length.
template <typename Record>
[[nodiscard]] std::optional<Record> readRecord(Request request) {
    static_assert(std::is_trivially_copyable_v<Record>);
    if (request.size() != sizeof(Record)) {
        return std::nullopt;
    }
    Record record;
    std::memcpy(&record, request.data(), sizeof(record));
    return record;
}

// The words that every request starts with; those that did not come are zero.
[[nodiscard]] inline db_request_header requestHeader(Request request) {
    db_request_header header{};
    const auto present = request.first(std::min(request.size(), sizeof(header)));
    std::ranges::copy(present, std::as_writable_bytes(std::span(&header, 1)).begin());
    return header;
}

inline void appendBytes(Message& message, std::span<const std::byte> bytes) {
    const std::size_t length = message.size();
    message.resize(length + bytes.size());
    std::ranges::copy(bytes, message.begin() + static_cast<std::ptrdiff_t>(length));
}

template <typename Record>
void appendRecord(Message& message, const Record& record) {
    static_assert(std::is_trivially_copyable_v<Record> && alignof(Record) == 1);
    appendBytes(message, std::as_bytes(std::span(&record, 1)));
}

// Changes a word of the message where the message reaches that far.
template <typename Change>
void changeWord(Message& message, std::size_t offset, Change change) {
    u32le word;
    if (message.size() >= offset + sizeof(word)) {
        std::memcpy(&word, message.data() + offset, sizeof(word));
        word = change(word);
        std::memcpy(message.data() + offset, &word, sizeof(word));
    }
}

// A response without entries, or the start of one with count of them.
[[nodiscard]] inline db_response_header responseHeader(const db_request_header& request,
                                                       DbStatus status, uint32_t count = 0) {
    db_response_header header{};
    header.command_type = request.command_type;
    header.status = status;
    header.count_returned = count;
    header.rtos_db_version = kDatabaseVersion;
    header.token = request.token;
    return header;
}

// A response of its header alone.
[[nodiscard]] inline Message statusReply(const db_request_header& request, DbStatus status) {
    Message reply;
    appendRecord(reply, responseHeader(request, status));
    return reply;
}

}  // namespace simulator

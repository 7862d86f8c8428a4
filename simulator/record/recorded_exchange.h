// An exchange as one line of text, which people read and keep as a test case.
//
//   SECONDS CHANNEL REQUEST [after=MS] [MESSAGE]... [closed]
//
// Messages are hexadecimal digits, "-" for one without bytes. A line that starts with # says
// nothing.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

struct RecordedExchange {
    std::chrono::microseconds time{0};  // since the recording began
    std::string channel;
    std::vector<std::byte> request;
    std::chrono::milliseconds delay{0};  // until the answer's first message
    std::vector<std::vector<std::byte>> messages = {};
    bool closed = false;  // the database closed the connection
};

// Without a line end.
[[nodiscard]] std::string formatExchange(const RecordedExchange& exchange);

// Throws std::invalid_argument that says what is wrong.
[[nodiscard]] RecordedExchange parseExchange(std::string_view line);

}  // namespace simulator

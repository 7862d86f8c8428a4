#include "simulator/record/recorded_exchange.h"

#include <boost/algorithm/hex.hpp>
#include <iomanip>
#include <iterator>
#include <span>
#include <sstream>
#include <stdexcept>

#include <mediacheckd/platform/vxipc.h>

namespace simulator {

namespace {

using Bytes = std::vector<std::byte>;

constexpr std::string_view kEmpty = "-";
constexpr std::string_view kClosed = "closed";
constexpr std::string_view kAfter = "after=";

std::string digits(const Bytes& bytes) {
    if (bytes.empty()) {
        return std::string(kEmpty);
    }
    std::string text;
    const auto* const first = reinterpret_cast<const unsigned char*>(bytes.data());
    boost::algorithm::hex_lower(first, first + bytes.size(), std::back_inserter(text));
    return text;
}

Bytes bytesOf(const std::string& word) {
    std::vector<unsigned char> values;
    try {
        if (word != kEmpty) {
            boost::algorithm::unhex(word, std::back_inserter(values));
        }
    } catch (const boost::algorithm::hex_decode_error&) {
        throw std::invalid_argument("'" + word + "' is no message");
    }
    if (values.size() > VX_IPC_MESSAGE_MAX) {
        throw std::invalid_argument("a message has at most " + std::to_string(VX_IPC_MESSAGE_MAX) +
                                    " bytes");
    }
    const auto bytes = std::as_bytes(std::span(values));
    return {bytes.begin(), bytes.end()};
}

template <typename Number>
Number read(std::string_view text, const char* what) {
    std::istringstream stream{std::string(text)};
    Number number = 0;
    if (!(stream >> number) || !stream.eof() || number < 0 || number > 1'000'000'000) {
        throw std::invalid_argument("'" + std::string(text) + "' is no " + what);
    }
    return number;
}

}  // namespace

std::string formatExchange(const RecordedExchange& exchange) {
    std::ostringstream line;
    line << std::fixed << std::setprecision(6)
         << std::chrono::duration<double>(exchange.time).count() << ' ' << exchange.channel << ' '
         << digits(exchange.request);
    if (exchange.delay.count() != 0) {
        line << ' ' << kAfter << exchange.delay.count();
    }
    for (const Bytes& message : exchange.messages) {
        line << ' ' << digits(message);
    }
    if (exchange.closed) {
        line << ' ' << kClosed;
    }
    return line.str();
}

RecordedExchange parseExchange(std::string_view line) {
    std::istringstream stream{std::string(line)};
    std::string seconds;
    std::string request;
    RecordedExchange exchange;
    if (!(stream >> seconds >> exchange.channel >> request)) {
        throw std::invalid_argument("a time, a channel and a request are missing");
    }
    exchange.time = std::chrono::round<std::chrono::microseconds>(
        std::chrono::duration<double>(read<double>(seconds, "time")));
    exchange.request = bytesOf(request);
    for (std::string word; stream >> word;) {
        if (exchange.closed) {
            throw std::invalid_argument("nothing comes after '" + std::string(kClosed) + "'");
        }
        if (word == kClosed) {
            exchange.closed = true;
        } else if (word.starts_with(kAfter)) {
            exchange.delay = std::chrono::milliseconds(
                read<int64_t>(word.substr(kAfter.size()), "number of milliseconds"));
        } else {
            exchange.messages.push_back(bytesOf(word));
        }
    }
    return exchange;
}

}  // namespace simulator

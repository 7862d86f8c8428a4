// The parts that a text is appended from: plain text, numbers, hexadecimal bytes and JSON text.
//
// Each kind of part has three functions:
//   maxSize    a bound on the characters it takes, cheap to tell
//   exactSize  the characters it takes
//   write      writes them and returns the place behind them
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>
#include <string_view>

#include "libvxMediaRTOSDB/src/http/text/decimal.h"

// A text from outside, written with quotes, backslashes and control bytes escaped.
struct JsonText {
    std::string_view text;
};

// The bytes of a GUMI, written as two lower-case hexadecimal digits each.
struct HexText {
    std::span<const uint8_t, 16> bytes;
};

template <size_t Size>
constexpr size_t maxSize(const char (&)[Size]) {
    return Size - 1;
}

template <size_t Size>
char* write(char* place, const char (&text)[Size]) {
    std::memcpy(place, text, Size - 1);
    return place + Size - 1;
}

inline size_t maxSize(std::string_view text) {
    return text.size();
}

inline char* write(char* place, std::string_view text) {
    if (!text.empty()) {
        std::memcpy(place, text.data(), text.size());
    }
    return place + text.size();
}

constexpr size_t maxSize(char) {
    return 1;
}

inline char* write(char* place, char character) {
    *place = character;
    return place + 1;
}

template <std::integral Number>
constexpr size_t maxSize(Number) {
    return std::numeric_limits<Number>::digits10 + 2;
}

template <std::integral Number>
char* write(char* place, Number number) {
    if (number < 0) {
        return writeDecimal(write(place, '-'), -static_cast<uint64_t>(number));
    }
    return writeDecimal(place, static_cast<uint64_t>(number));
}

constexpr size_t maxSize(HexText hex) {
    return 2 * hex.bytes.size();
}

char* write(char* place, HexText hex);

// Characters that one character of a JSON text takes at most.
constexpr size_t kLongestEscape = 6;

constexpr size_t maxSize(JsonText json) {
    return kLongestEscape * json.text.size();
}

char* write(char* place, JsonText json);

// The bound is the size of every part but numbers and JSON text.
template <typename Part>
constexpr size_t exactSize(const Part& part) {
    return maxSize(part);
}

template <std::integral Number>
size_t exactSize(const Number& number) {
    char digits[maxSize(Number{}) + kDecimalStep];
    return static_cast<size_t>(write(digits, number) - digits);
}

size_t exactSize(JsonText json);

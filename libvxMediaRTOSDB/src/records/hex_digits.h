// Bytes as hexadecimal digits.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

// The digit for ten; the other letters follow it.
enum class HexCase : char { kLower = 'a', kUpper = 'A' };

// Returns two digits for each byte.
template <size_t Size>
constexpr std::array<char, 2 * Size> hexDigits(std::span<const uint8_t, Size> bytes,
                                               HexCase letters) {
    const auto digit = [=](unsigned nibble) {
        return static_cast<char>(nibble < 10 ? '0' + nibble
                                             : static_cast<unsigned>(letters) + nibble - 10);
    };
    std::array<char, 2 * Size> digits = {};
    for (size_t i = 0; i < Size; ++i) {
        digits[2 * i] = digit(bytes[i] >> 4);
        digits[2 * i + 1] = digit(bytes[i] & 0xFu);
    }
    return digits;
}

// Decimal numbers, written eight digits a step.
//
// The digits of a step are computed side by side in one word, without a loop or a branch: as many
// as a response has, they are most of what it costs.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

// Characters that are stored in a step, and that a number may so reach behind its end.
constexpr unsigned kDecimalStep = 8;

namespace decimal {

constexpr uint64_t kStepLimit = 100'000'000;

// Returns the digits of a number below 10^8, the first one in the lowest byte.
constexpr uint64_t eightDigits(uint32_t number) {
    // Two numbers below 10^4, then four below 10^2, then eight below 10: each is split by a
    // multiplication that stands for the division, for all of them at once.
    const uint64_t halves = number / 10000 | uint64_t{number % 10000} << 32;
    const uint64_t hundreds = halves * 10486 >> 20 & 0x0000007F'0000007F;
    const uint64_t pairs = hundreds | (halves - 100 * hundreds) << 16;
    const uint64_t tens = pairs * 103 >> 10 & 0x000F000F'000F000F;
    return tens | (pairs - 10 * tens) << 8;
}

inline void store(char* place, uint64_t digits) {
    static_assert(std::endian::native == std::endian::little);
    digits |= 0x3030303030303030;
    std::memcpy(place, &digits, sizeof digits);
}

}  // namespace decimal

// Returns the place behind the number. Up to kDecimalStep characters are stored behind place even
// where the number is shorter.
inline char* writeDecimal(char* place, uint64_t number) {
    if (number < 10) {
        *place = static_cast<char>('0' + number);
        return place + 1;
    }
    if (number >= decimal::kStepLimit) [[unlikely]] {
        place = writeDecimal(place, number / decimal::kStepLimit);
        decimal::store(place,
                       decimal::eightDigits(static_cast<uint32_t>(number % decimal::kStepLimit)));
        return place + kDecimalStep;
    }
    const uint64_t digits = decimal::eightDigits(static_cast<uint32_t>(number));
    constexpr uint64_t kLastDigit = uint64_t{1} << 56;  // is none of the leading ones
    const auto leadingZeros = static_cast<unsigned>(std::countr_zero(digits | kLastDigit)) / 8;
    decimal::store(place, digits >> 8 * leadingZeros);
    return place + kDecimalStep - leadingZeros;
}

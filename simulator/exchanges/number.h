// Numbers that people write.
#pragma once

#include <cstdint>
#include <string_view>

namespace simulator {

// Reads a decimal number of 32 bits.
// Throws std::invalid_argument, whose text says that WHAT 'TEXT' is no number.
[[nodiscard]] uint32_t readNumber(std::string_view text, std::string_view what);

}  // namespace simulator

// Words in texts that print them with a sign.
#pragma once

#include <cstdint>

// Returns the word as %d takes it: 2^31 and more become negative.
constexpr int signedWord(uint32_t word) {
    return static_cast<int>(word);
}

// The camera's model number, on which some file naming rules depend.
#pragma once

#include <algorithm>
#include <cstdint>

// Tells whether cameras of this model number the chapters of a chaptered video from 1; of the
// number the low 8 bits count.
constexpr bool countsChaptersFromOne(uint32_t modelNumber) {
    constexpr uint32_t kModels[] = {24, 30, 32, 33, 50, 51, 53, 54};
    return std::ranges::count(kModels, modelNumber & 0xFF) != 0;
}

extern "C" {
#pragma GCC visibility push(default)

// Returns the camera's model number, 0 to 255. It is read once from the settings service and kept;
// while the service does not give it, the number is 30 and the next call asks again. Of a value
// from 2^31 on the low 8 bits are returned, and the next call asks again as well.
[[nodiscard]] int csiGetModelNumber(void);

// Returns 1 when the camera numbers the chapters of a chaptered video from 1, else 0.
[[nodiscard]] int usesOneBasedChapters(void);

#pragma GCC visibility pop
}

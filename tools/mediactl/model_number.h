// The model number as the settings service tells it, without the library's stand-in for none.
#pragma once

#include <cstdint>
#include <optional>

#include "tools/mediactl/failure.h"

namespace mediactl {

[[nodiscard]] std::optional<uint32_t> modelNumber();

// What it means that there is none.
[[nodiscard]] Failure noModelNumber();

}  // namespace mediactl

// A card folder as a media database.
#pragma once

#include <filesystem>

#include "simulator/card/database.h"

namespace simulator {

// Scans CARD/DCIM and applies CARD/card.json where there is one.
// Throws InputError when the card has no DCIM, cannot be read, or its card.json is wrong.
[[nodiscard]] Database loadCard(const std::filesystem::path& card);

}  // namespace simulator

// A card folder as a media database.
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "simulator/card/database.h"

namespace simulator {

// Sets what the files of the items say of themselves, and adds to skipped what cannot be read.
using DescribeMedia =
    std::function<void(std::vector<MediaItem>& items, std::vector<Skipped>& skipped)>;

// Scans CARD/DCIM, has the media described, and applies CARD/card.json where there is one.
// Throws InputError when the card has no DCIM, cannot be read, or its card.json is wrong.
[[nodiscard]] Database loadCard(
    const std::filesystem::path& card, const DescribeMedia& describe = [](auto&, auto&) {});

}  // namespace simulator

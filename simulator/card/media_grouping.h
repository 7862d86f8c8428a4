// Turns the files of a card into the items of the database.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "simulator/card/card_scan.h"
#include "simulator/card/media_item.h"

namespace simulator {

// Names a single item's content type where the file's name does not make it one.
using ExtraContentType =
    std::function<std::optional<uint32_t>(const std::string& directory, const std::string& file)>;

// The items of the directories, by directory and leading file name. A group's files of one
// directory are one item, or several where they span more than kSpanMax numbers; a group that goes
// on in the next directory is a further item of the same group number. A file that is no item's is
// added to skipped.
[[nodiscard]] std::vector<MediaItem> groupMedia(const std::vector<CardDirectory>& directories,
                                                bool oneBasedChapters,
                                                const ExtraContentType& extraContentType,
                                                std::vector<Skipped>& skipped);

}  // namespace simulator

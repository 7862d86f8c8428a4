// What the files of a card say of themselves, read once for each state of a file.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "simulator/card/media_item.h"
#include "simulator/card/skipped.h"
#include "simulator/media/media_facts.h"

namespace simulator {

class MediaReader {
  public:
    // Sets what the files of the items say. A file is read where its size or time has changed since
    // the last call. What cannot be read keeps what its name says, and is added to skipped.
    void describe(const std::filesystem::path& card, std::vector<MediaItem>& items,
                  std::vector<Skipped>& skipped);

  private:
    struct Known {
        uint64_t size = 0;
        uint32_t modified = 0;
        std::optional<MediaFacts> facts = {};
        std::string trouble = {};
    };

    std::unordered_map<std::string, Known> mKnown;
};

}  // namespace simulator

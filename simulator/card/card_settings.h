// card.json: what a file system cannot tell of a card. docs/simulator.md describes it.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "simulator/card/media_item.h"

namespace simulator {

class CardSettings {
  public:
    // Reads the document; where there is none, nothing is set.
    // Throws InputError when it cannot be read or is not what it should be outside of "files".
    explicit CardSettings(const std::filesystem::path& path);

    [[nodiscard]] std::optional<uint32_t> modelNumber() const { return mModelNumber; }
    [[nodiscard]] std::optional<uint32_t> sessionId() const { return mSessionId; }

    // The content type that the document gives a file, if any. Throws InputError.
    [[nodiscard]] std::optional<uint32_t> contentType(const std::string& directory,
                                                      const std::string& file) const;

    // Sets what the document says of the files. Throws InputError when it names a file that no item
    // has, or says something that does not fit the file.
    void applyTo(std::vector<MediaItem>& items) const;

  private:
    std::string mPath;
    nlohmann::json mDocument = nlohmann::json::object();
    std::optional<uint32_t> mModelNumber = {};
    std::optional<uint32_t> mSessionId = {};
};

}  // namespace simulator

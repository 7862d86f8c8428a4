// What a media file says of itself.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

namespace simulator {

// What the file does not say is 0.
struct MediaFacts {
    uint32_t created = 0;  // seconds since 1970, by the camera's clock
    uint32_t durationMs = 0;
    uint32_t width = 0;
    uint32_t height = 0;
    uint32_t frameRateNumerator = 0;
    uint32_t frameRateDenominator = 0;
    bool progressive = false;
    std::vector<uint32_t> highlights = {};  // where a video's chapters begin, in milliseconds
};

// Reads a video or, where the name ends in ".JPG", a photo. None for a placeholder, a file that is
// empty or begins with zeros, and wherever this build reads no media. Throws InputError with the
// reason where the file is no such medium.
[[nodiscard]] std::optional<MediaFacts> readMediaFacts(const std::filesystem::path& path);

}  // namespace simulator

// What a camera's file name says of the file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

struct MediaName {
    uint32_t contentType;       // of the item that the file is, or is part of
    std::string groupKey = {};  // the same for all files of a group in one directory; empty: single
    uint32_t groupNumber = 0;   // of a group
    uint32_t number = 0;        // of the file in its group
};

// Reads a file name; none when it is not a video's or a photo's. Which number a chapter has depends
// on whether the camera counts chapters from one.
//
//   VXMF0012.MP4, VX020012.MP4, ...  a recording and its further chapters: file number 12
//   VH010012.MP4, VH020012.MP4, ...  the same, named by chapter throughout; .360 too
//   VHAB0001.MP4, VHAB0002.MP4, ...  grouped videos: group 1002 (AB), numbers 1, 2; H, L, M or X
//   V0070001.MP4, V0070002.MP4, ...  grouped videos: group 7
//   VPAB0001.JPG, VPAB0002.JPG, ...  a time lapse: group 1002; P or S
//   V0070001.JPG, V0070002.JPG, ...  a burst: group 7
//   any other .MP4, .360 or .JPG     a single video or photo
[[nodiscard]] std::optional<MediaName> parseMediaName(std::string_view name, bool oneBasedChapters);

}  // namespace simulator

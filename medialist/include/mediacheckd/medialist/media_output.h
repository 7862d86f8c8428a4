// What one step of the walk hands to the uploading side.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The walk writes these fields of the record it is given: it adds to files and sets the others.
struct MediaOutput {
    std::vector<std::string> files;  // full paths of all files of the item
    int32_t mediaCode = 0;           // kind of media; see docs/rules-and-sorting.md
    std::string text1;               // always empty
    std::string text2;               // always empty
};

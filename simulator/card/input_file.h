// Files that the caller names.
#pragma once

#include <fstream>
#include <string>

namespace simulator {

// Opens a file for reading. Throws InputError: file, reason.
[[nodiscard]] std::ifstream openInput(const std::string& path);

}  // namespace simulator

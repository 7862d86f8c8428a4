// Files that the caller names.
#pragma once

#include <fstream>
#include <string>

namespace mediactl {

// Opens a file for reading. Throws simulator::InputError: file, reason.
[[nodiscard]] std::ifstream openInput(const std::string& path);

}  // namespace mediactl

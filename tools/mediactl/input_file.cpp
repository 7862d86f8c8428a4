#include "tools/mediactl/input_file.h"

#include <cerrno>
#include <cstring>

#include "simulator/input_error.h"

namespace mediactl {

std::ifstream openInput(const std::string& path) {
    std::ifstream file(path);
    if (!file) {
        throw simulator::InputError(path + ": " + std::strerror(errno));
    }
    return file;
}

}  // namespace mediactl

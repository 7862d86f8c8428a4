#include "simulator/card/input_file.h"

#include <cerrno>
#include <cstring>

#include "simulator/card/input_error.h"

namespace simulator {

std::ifstream openInput(const std::string& path) {
    std::ifstream file(path);
    // A folder opens, but gives nothing.
    if (!file || (file.peek(), file.bad())) {
        throw InputError(path + ": " + std::strerror(errno));
    }
    return file;
}

}  // namespace simulator

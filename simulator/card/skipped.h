// What the simulated database leaves out of a card.
#pragma once

#include <string>
#include <tuple>

namespace simulator {

struct Skipped {
    std::string file;  // below DCIM
    std::string reason;

    bool operator<(const Skipped& other) const {
        return std::tie(file, reason) < std::tie(other.file, other.reason);
    }
};

}  // namespace simulator

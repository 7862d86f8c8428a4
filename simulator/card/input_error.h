#pragma once

#include <stdexcept>

namespace simulator {

// What is wrong with files that somebody prepared. The text is for people: file, place in it,
// reason.
class InputError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace simulator

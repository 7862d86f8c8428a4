#pragma once

#include <stdexcept>

namespace simulator {

// What is wrong with a card. The text is for people: file, place in it, reason.
class CardError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace simulator

#include "simulator/exchanges/number.h"

#include <charconv>
#include <stdexcept>
#include <string>

namespace simulator {

uint32_t readNumber(std::string_view text, std::string_view what) {
    uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), number);
    if (error != std::errc{} || end != text.end()) {
        throw std::invalid_argument(std::string(what) + " '" + std::string(text) +
                                    "' is no number");
    }
    return number;
}

}  // namespace simulator

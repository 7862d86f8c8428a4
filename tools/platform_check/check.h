// One promise of a platform and how it is put to the test.
#pragma once

#include <array>
#include <cstddef>
#include <cstdio>
#include <span>
#include <string>

// Says what was seen, for a promise that is broken; empty when it is kept.
using Outcome = std::string;

struct Check {
    const char* promise;
    Outcome (*run)();
};

// In the order in which they are to be made.
std::span<const Check> channelChecks();
std::span<const Check> settingsChecks();
std::span<const Check> builderChecks();

// The last one of all, for which somebody has to end the media database; it waits for that.
extern const Check kPeerGoneCheck;

// An outcome that shows a number where another was promised.
template <typename Number>
Outcome saw(const char* call, Number result) {
    return std::string(call) + " returned " + std::to_string(result);
}

// A record between bytes that a call has no business with.
template <typename Record>
class Guarded {
  public:
    Guarded() {
        before.fill(kUntouched);
        after.fill(kUntouched);
    }

    [[nodiscard]] bool intact() const {
        for (size_t i = 0; i < before.size(); ++i) {
            if (before[i] != kUntouched || after[i] != kUntouched) {
                return false;
            }
        }
        return true;
    }

  private:
    static constexpr unsigned char kUntouched = 0xA5;
    std::array<unsigned char, 64> before;

  public:
    Record record = {};

  private:
    std::array<unsigned char, 64> after;
};

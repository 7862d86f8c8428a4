// One promise of a platform and how it is put to the test.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>

struct Outcome {
    bool kept;
    std::string seen;
};

struct Check {
    const char* promise;
    Outcome (*run)();
};

// In the order in which they are to be made.
std::span<const Check> channelChecks();
std::span<const Check> settingsChecks();
std::span<const Check> builderChecks();

// For an answer of several messages: the names of the files in a directory of the card.
Outcome receivesMessageByMessage(const std::string& directory);

// For the last check of all: somebody has to end the media database, and it waits for that.
Outcome noticesLostPeer();

// A call has so much time to return; then the check that makes it fails, and with it the program.
constexpr unsigned kPatienceSeconds = 30;
void startPatienceAnew();

inline std::string returned(const char* call, int result) {
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

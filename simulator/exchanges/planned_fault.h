// A fault, and on which exchanges it happens.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>

#include "simulator/exchanges/fault.h"

namespace simulator {

class PlannedFault {
  public:
    // Reads [CONDITION[,CONDITION]...:]KIND[=VALUE], such as "3:short=20", "refuse" or
    // "command=10,chance=25,seed=7:status=5". It happens where every condition holds:
    //   N              on the N-th exchange, from 1
    //   +N             on the N-th from now
    //   command=NUMBER on requests of this command
    //   chance=PERCENT by chance, among the exchanges that the others leave
    //   seed=NUMBER    of the chance, 0 unless given: the same seed gives the same exchanges
    //   for=SECONDS    so long, from now
    // exchanges: how many there were until now.
    // Throws std::invalid_argument that says what is wrong.
    explicit PlannedFault(std::string_view text, uint32_t exchanges = 0);

    // Tells whether it happens on an exchange, and counts it then; asked once for each exchange.
    [[nodiscard]] bool happensOn(uint32_t exchange, uint32_t command);

    [[nodiscard]] const Fault& fault() const { return mFault; }
    [[nodiscard]] const std::string& text() const { return mText; }
    // How often it has happened.
    [[nodiscard]] uint32_t times() const { return mTimes; }

  private:
    using Clock = std::chrono::steady_clock;

    void readCondition(std::string_view text, uint32_t exchanges);

    std::string mText;
    Fault mFault;
    std::optional<uint32_t> mExchange;
    std::optional<uint32_t> mCommand;
    std::optional<uint32_t> mPercent;
    std::optional<Clock::time_point> mEnd;
    std::mt19937 mRandom{0};
    uint32_t mTimes = 0;
};

}  // namespace simulator

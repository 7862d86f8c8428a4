#include "simulator/exchanges/planned_fault.h"

#include <stdexcept>

#include "simulator/exchanges/number.h"

namespace simulator {

namespace {

// Splits the text at its first mark; without one the second part is empty.
std::pair<std::string_view, std::string_view> splitAt(char mark, std::string_view text) {
    const auto place = text.find(mark);
    return place == std::string_view::npos
               ? std::pair(text, std::string_view())
               : std::pair(text.substr(0, place), text.substr(place + 1));
}

}  // namespace

PlannedFault::PlannedFault(std::string_view text, uint32_t exchanges) : mText(text), mFault() {
    auto conditions = std::string_view();
    if (const auto colon = text.find(':'); colon != std::string_view::npos) {
        conditions = text.substr(0, colon);
        text.remove_prefix(colon + 1);
        do {
            const auto [condition, others] = splitAt(',', conditions);
            readCondition(condition, exchanges);
            conditions = others;
        } while (!conditions.empty());
    }
    mFault = parseFault(text);
}

void PlannedFault::readCondition(std::string_view text, uint32_t exchanges) {
    if (text.find('=') == std::string_view::npos) {
        const bool fromNow = text.starts_with('+');
        const uint32_t exchange = readNumber(text.substr(fromNow ? 1 : 0), "exchange");
        if (exchange == 0) {
            throw std::invalid_argument("exchanges count from 1");
        }
        mExchange = exchange + (fromNow ? exchanges : 0);
        return;
    }
    const auto [name, value] = splitAt('=', text);
    const uint32_t number = readNumber(value, name);
    if (name == "command") {
        mCommand = number;
    } else if (name == "chance" && number <= 100) {
        mPercent = number;
    } else if (name == "seed") {
        mRandom.seed(number);
    } else if (name == "for") {
        mEnd = Clock::now() + std::chrono::seconds(number);
    } else {
        throw std::invalid_argument("'" + std::string(text) + "' is no condition");
    }
}

bool PlannedFault::happensOn(uint32_t exchange, uint32_t command) {
    const bool possible = (!mExchange || *mExchange == exchange) &&
                          (!mCommand || *mCommand == command) && (!mEnd || Clock::now() < *mEnd);
    const bool happens = possible && (!mPercent || mRandom() % 100 < *mPercent);
    mTimes += happens ? 1 : 0;
    return happens;
}

}  // namespace simulator

#include "simulator/live/live_card.h"

#include <csignal>
#include <cstdio>
#include <utility>

#include "platform/host/stop_signals.h"
#include "simulator/card/card.h"
#include "simulator/card/input_error.h"

namespace simulator {

LiveCard::LiveCard(std::filesystem::path card)
    : mCard(std::move(card)),
      mHangups(host::openSignals({SIGHUP})),
      mWatch(mCard),
      mDatabase(loadCard(mCard)),
      mSettledSession(mDatabase.sessionId) {}

Database& LiveCard::current() {
    const bool asked = host::takeSignal(mHangups);
    if (mWatch.changed() || asked) {
        readAnew();
    }
    return mDatabase;
}

void LiveCard::setModelNumber(uint32_t number) {
    mModelNumber = number;
    mDatabase.modelNumber = number;
}

void LiveCard::readAnew() {
    mWatch = CardWatch(mCard);  // before the card is read: what changes meanwhile is not lost
    try {
        Database database = loadCard(mCard);
        const uint32_t settled = std::exchange(mSettledSession, database.sessionId);
        if (settled == mSettledSession || mSettledSession == Database().sessionId) {
            database.sessionId = mDatabase.sessionId + 1;
        }
        database.repeatStatusWrites(mDatabase);
        database.modelNumber = mModelNumber ? mModelNumber : database.modelNumber;
        mDatabase = std::move(database);
    } catch (const InputError& error) {
        std::fprintf(stderr, "mediadb-sim: %s\n", error.what());
    }
}

}  // namespace simulator

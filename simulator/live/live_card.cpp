#include "simulator/live/live_card.h"

#include <csignal>
#include <cstdio>
#include <functional>
#include <utility>

#include "platform/host/stop_signals.h"
#include "simulator/card/card.h"
#include "simulator/card/input_error.h"

namespace simulator {

LiveCard::LiveCard(std::filesystem::path card)
    : mCard(std::move(card)),
      mHangups(host::openSignals({SIGHUP})),
      mWatch(mCard),
      mDatabase(read()),
      mSettledSession(mDatabase.sessionId) {}

Database& LiveCard::current() {
    const bool asked = host::takeSignal(mHangups);
    if (asked) {
        mMedia = {};
    }
    if (mWatch.changed() || asked) {
        readAnew();
    }
    return mDatabase;
}

void LiveCard::setModelNumber(uint32_t number) {
    mModelNumber = number;
    mDatabase.modelNumber = number;
}

Database LiveCard::read() {
    Database database = loadCard(mCard, std::bind_front(&MediaReader::describe, &mMedia, mCard));
    std::set<Skipped> skipped(database.skipped.begin(), database.skipped.end());
    bool isNew = false;
    for (const Skipped& one : skipped) {
        if (!mTold.contains(one)) {
            std::fprintf(stderr, "mediadb-sim: skipped %s: %s\n", one.file.c_str(),
                         one.reason.c_str());
            isNew = true;
        }
    }
    if (isNew) {
        std::fprintf(stderr, "mediadb-sim: skipped %zu in all\n", skipped.size());
    }
    mTold = std::move(skipped);
    return database;
}

void LiveCard::readAnew() {
    mWatch = CardWatch(mCard);  // before the card is read: what changes meanwhile is not lost
    try {
        Database database = read();
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

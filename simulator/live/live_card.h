// A card folder that is served while it changes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <set>

#include "platform/host/unique_fd.h"
#include "simulator/card/database.h"
#include "simulator/live/card_watch.h"
#include "simulator/media/media_reader.h"

namespace simulator {

class LiveCard {
  public:
    // Reads the card and its media; from now on SIGHUP asks for it to be read anew and does nothing
    // else. Throws InputError as loadCard does, std::system_error.
    explicit LiveCard(std::filesystem::path card);

    // The database of the card as it is now. Where the card has changed, or SIGHUP came, it is a
    // new session, and upload statuses that were written stay. A card that cannot be read, or whose
    // card.json is wrong, is told on standard error, and what was read last stays. So is, once,
    // what is skipped. Valid until the next call.
    [[nodiscard]] Database& current();

    // From now on the camera's model number, whatever card.json says.
    void setModelNumber(uint32_t number);

  private:
    [[nodiscard]] Database read();
    void readAnew();

    std::filesystem::path mCard;
    host::UniqueFd mHangups;
    CardWatch mWatch;
    MediaReader mMedia;
    std::set<Skipped> mTold;
    Database mDatabase;
    std::optional<uint32_t> mModelNumber;
    uint32_t mSettledSession;  // of the card itself, as it was read last
};

}  // namespace simulator

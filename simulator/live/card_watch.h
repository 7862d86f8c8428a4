// Notices that something in a card's folder has changed.
#pragma once

#include <filesystem>

#include "platform/host/unique_fd.h"

namespace simulator {

class CardWatch {
  public:
    // Watches card.json, DCIM and its directories as they are now. Where the system has no more
    // watches to give, some changes are not noticed.
    explicit CardWatch(const std::filesystem::path& card);

    // Tells whether something has changed since the last question. A file that is being written has
    // changed when its writer closes it.
    [[nodiscard]] bool changed();

  private:
    host::UniqueFd mEvents;
};

}  // namespace simulator

// What every response starts with: the card's identity and an open connection.
#pragma once

#include "libvxMediaRTOSDB/src/exchange/rtos_connection_guard.h"
#include <mediacheckd/vcore/card_id.h>

// The identity as responses give it: "0" for a card that has none.
class CardIdentity {
  public:
    // Reads it; a failure is logged.
    CardIdentity();

    [[nodiscard]] bool known() const { return mKnown; }
    [[nodiscard]] const char* text() const { return mKnown ? mText : "0"; }

  private:
    char mText[CARD_ID_SIZE];
    bool mKnown;
};

// Returns the status that a response has so far: HTTP_NOT_FOUND without an identity, else
// HTTP_INTERNAL_ERROR without a connection.
[[nodiscard]] int statusAtStart(const RtosConnectionGuard& connection,
                                const CardIdentity& identity);

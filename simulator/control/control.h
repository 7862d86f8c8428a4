// What the simulator is told while it runs, on a channel of its own.
#pragma once

#include "platform/host/channel_server.h"
#include "simulator/answers/reply_record.h"
#include "simulator/exchanges/exchanges.h"
#include "simulator/live/live_card.h"

namespace simulator {

inline constexpr char kControlChannel[] = "mediadb_sim";

// Carries out one request, words with spaces between them:
//   statistics              tells how many exchanges there were
//   faults                  tells the faults with their numbers
//   fault [CONDITION:]KIND  lets a fault happen (PlannedFault tells its form)
//   heal NUMBER|all         lets it happen no more
//   session [NUMBER]        begins a session, the next one unless a number is given
//   model-number NUMBER     changes the camera's model number
//   status DIR/FILE NUMBER  changes a file's upload status
// The reply is a JSON object: what was told or done, or {"error": "the reason"}. It comes in as
// many messages as it needs, each with '+' before its text and the last one with '.'.
[[nodiscard]] host::Reply control(LiveCard& card, Exchanges& exchanges, Request request);

}  // namespace simulator

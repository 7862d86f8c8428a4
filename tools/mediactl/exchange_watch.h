// What happens on the channel, seen between the library and the platform: the library takes some
// answers for good that tell of trouble, and of others it tells only that they are no good.
#pragma once

#include <optional>

#include "tools/mediactl/failure.h"

namespace mediactl {

// Shows the bytes of each exchange to come on standard error.
void dumpExchanges();

// From now on, a write of an upload status is not sent but answered here as one that succeeded.
void holdStatusWrites();
[[nodiscard]] uint32_t heldStatusWrites();

// Forgets what was seen.
void forgetExchanges();

// The trouble seen since then: the first answer that was no good, or what the latest exchange came
// to when it brought no answer. None where a later try brought one.
[[nodiscard]] std::optional<Failure> exchangeTrouble();

// Fails with the trouble that was seen, with a change of the card between two pages, or with what
// the caller knows where neither was.
// unseen: such as "the answer names no file".
[[nodiscard]] int failExchange(const std::string& unseen);

// Fails because a list's pages are of two sessions.
[[nodiscard]] int failChanged();

}  // namespace mediactl

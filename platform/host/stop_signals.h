// Signals as something that a loop can wait for or ask for.
#pragma once

#include <initializer_list>

#include "platform/host/unique_fd.h"

namespace host {

// The signals as a descriptor that becomes readable when one of them arrives; from then on they do
// nothing else to the calling thread and to the threads that it starts.
// Throws std::system_error.
[[nodiscard]] UniqueFd openSignals(std::initializer_list<int> signals);

// The request to stop: SIGINT and SIGTERM.
[[nodiscard]] UniqueFd openStopSignals();

// Tells, without waiting, whether one of the descriptor's signals has arrived, and takes it.
[[nodiscard]] bool takeSignal(const UniqueFd& signals);

}  // namespace host

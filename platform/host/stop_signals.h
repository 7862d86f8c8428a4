// The request to stop, as something that a loop can wait for.
#pragma once

#include "platform/host/unique_fd.h"

namespace host {

// SIGINT and SIGTERM as a descriptor that becomes readable when one of them arrives; from then on
// they do nothing else to the calling thread and to the threads that it starts.
// Throws std::system_error.
[[nodiscard]] UniqueFd openStopSignals();

}  // namespace host

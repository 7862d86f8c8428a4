// Whole messages over a connected AF_UNIX SOCK_SEQPACKET socket. Neither call waits.
#pragma once

#include <sys/un.h>

#include <cstddef>
#include <span>

#include "platform/host/unique_fd.h"

namespace host {

// A socket for messages, not yet connected or bound; get() is negative on failure (errno is set).
[[nodiscard]] UniqueFd openMessageSocket() noexcept;

// Connects to the socket at the address; a full backlog is a failure.
// Returns 0 or a negative errno.
[[nodiscard]] int connectTo(int socket, const sockaddr_un& address) noexcept;

// Sends one message; a peer that has gone raises no signal.
// Returns 0 or a negative errno: -EAGAIN when the peer has no room for it at present.
[[nodiscard]] int sendMessage(int socket, std::span<const std::byte> message) noexcept;

// Receives one message.
// Returns its length, zero included, or a negative errno: -EAGAIN when none is there, -ECONNRESET
// when the peer has closed, -EMSGSIZE when it is longer than the buffer (it is gone then).
[[nodiscard]] int receiveMessage(int socket, std::span<std::byte> buffer) noexcept;

}  // namespace host

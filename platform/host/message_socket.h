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

// Whether the process that listens for the connected socket belongs to root or to the caller's
// user: the path is below a folder that everybody may write to.
// Returns 0 or a negative errno: -EACCES when it belongs to somebody else.
[[nodiscard]] int checkPeer(int socket) noexcept;

// Sends one message; a peer that has gone raises no signal.
// Returns 0 or a negative errno: -EAGAIN when the peer has no room for it at present.
[[nodiscard]] int sendMessage(int socket, std::span<const std::byte> message) noexcept;

// Receives one message.
// Returns its length, zero included, or a negative errno: -EAGAIN when none is there, -ECONNRESET
// when the peer has closed (and for a message of no bytes that it sent just before), -EMSGSIZE when
// the message is longer than the buffer (it is gone then).
[[nodiscard]] int receiveMessage(int socket, std::span<std::byte> buffer) noexcept;

}  // namespace host

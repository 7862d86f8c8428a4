#include "platform/host/message_socket.h"

#include <poll.h>
#include <sys/socket.h>

#include <cerrno>

namespace host {

namespace {

// Repeats a call that a signal interrupted; gives its result or a negative errno.
template <typename Call>
int retried(Call call) noexcept {
    for (;;) {
        const auto result = call();
        if (result >= 0) {
            return static_cast<int>(result);
        }
        if (errno != EINTR) {
            return -errno;
        }
    }
}

// A receive gives zero for a message of no bytes and for the end of the connection alike.
bool hasClosed(int socket) noexcept {
    pollfd connection{socket, POLLRDHUP, 0};
    return poll(&connection, 1, 0) != 0;
}

}  // namespace

UniqueFd openMessageSocket() noexcept {
    return UniqueFd(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}

int connectTo(int socket, const sockaddr_un& address) noexcept {
    return retried([&] {
        return connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address));
    });
}

int checkPeer(int socket) noexcept {
    ucred peer{};
    socklen_t length = sizeof(peer);
    if (getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &length) != 0) {
        return -errno;
    }
    return peer.uid == 0 || peer.uid == geteuid() ? 0 : -EACCES;
}

int sendMessage(int socket, std::span<const std::byte> message) noexcept {
    const int sent =
        retried([&] { return send(socket, message.data(), message.size(), MSG_NOSIGNAL); });
    return sent < 0 ? sent : 0;
}

int receiveMessage(int socket, std::span<std::byte> buffer) noexcept {
    const int length =
        retried([&] { return recv(socket, buffer.data(), buffer.size(), MSG_TRUNC); });
    if (length == 0 && hasClosed(socket)) {
        return -ECONNRESET;
    }
    return length > static_cast<int>(buffer.size()) ? -EMSGSIZE : length;
}

}  // namespace host

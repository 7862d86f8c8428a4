#include "platform/host/message_socket.h"

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

}  // namespace

UniqueFd openMessageSocket() noexcept {
    UniqueFd messages(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    // Every message then comes with its sender's credentials and the end of the connection with
    // none: that alone tells a message of no bytes from a peer that has closed.
    const int on = 1;
    if (messages.get() >= 0 &&
        setsockopt(messages.get(), SOL_SOCKET, SO_PASSCRED, &on, sizeof(on)) != 0) {
        return UniqueFd();
    }
    return messages;
}

int connectTo(int socket, const sockaddr_un& address) noexcept {
    return retried([&] {
        return connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address));
    });
}

int sendMessage(int socket, std::span<const std::byte> message) noexcept {
    const int sent =
        retried([&] { return send(socket, message.data(), message.size(), MSG_NOSIGNAL); });
    return sent < 0 ? sent : 0;
}

int receiveMessage(int socket, std::span<std::byte> buffer) noexcept {
    iovec part{buffer.data(), buffer.size()};
    alignas(cmsghdr) unsigned char credentials[CMSG_SPACE(sizeof(ucred))];
    msghdr header{};
    const int length = retried([&] {
        header = msghdr{};
        header.msg_iov = &part;
        header.msg_iovlen = 1;
        header.msg_control = credentials;
        header.msg_controllen = sizeof(credentials);
        return recvmsg(socket, &header, 0);
    });
    if (length < 0) {
        return length;
    }
    if (header.msg_controllen == 0) {
        return -ECONNRESET;
    }
    return (header.msg_flags & MSG_TRUNC) != 0 ? -EMSGSIZE : length;
}

}  // namespace host

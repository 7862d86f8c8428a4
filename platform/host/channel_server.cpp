#include "platform/host/channel_server.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "platform/host/channel_address.h"
#include "platform/host/message_socket.h"
#include <mediacheckd/platform/vxipc.h>

namespace host {

namespace {

// Further clients wait in the backlog; the process keeps descriptors for everything else.
constexpr std::size_t kConnectionsMax = 500;
constexpr int64_t kWaitMaxMs = 60'000;
// How long no client is accepted after the system had no descriptor left for one.
constexpr std::chrono::milliseconds kAcceptPause{100};

[[noreturn]] void fail(const std::string& path, const char* reason) {
    throw std::runtime_error(path + ": " + reason);
}

[[noreturn]] void failWith(int error, const std::string& path) {
    throw std::system_error(error, std::generic_category(), path);
}

// Whether path is itself (not through a symbolic link) of the given kind, belongs to root or to the
// caller and is writable for nobody else.
// Returns 0, or a negative errno: -EACCES when it is there but not to be trusted.
int checkTrusted(const char* path, mode_t kind) noexcept {
    struct stat status {};
    if (lstat(path, &status) != 0) {
        return -errno;
    }
    const bool ownerTrusted = status.st_uid == 0 || status.st_uid == geteuid();
    const bool othersMayWrite = (status.st_mode & (S_IWGRP | S_IWOTH)) != 0;
    return (status.st_mode & S_IFMT) == kind && ownerTrusted && !othersMayWrite ? 0 : -EACCES;
}

void requireTrusted(int checked, const std::string& path) {
    if (checked == -EACCES) {
        fail(path, "is something else, belongs to somebody else or is writable for others");
    }
    if (checked < 0) {
        failWith(-checked, path);
    }
}

// Makes the folder where it is missing and locks it, so that of two servers that find the same
// dead socket only one takes its place. The lock goes with the descriptor.
UniqueFd lockFolder() {
    const char* const path = channelFolder();
    if (mkdir(path, S_IRWXU) != 0 && errno != EEXIST) {
        failWith(errno, path);
    }
    requireTrusted(checkTrusted(path, S_IFDIR), path);
    UniqueFd folder(::open(path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (folder.get() < 0 || flock(folder.get(), LOCK_EX) != 0) {
        failWith(errno, path);
    }
    return folder;
}

void removeDeadSocket(const sockaddr_un& address) {
    const int found = checkTrusted(address.sun_path, S_IFSOCK);
    if (found == -ENOENT) {
        return;
    }
    requireTrusted(found, address.sun_path);
    const UniqueFd probe = openMessageSocket();
    const int connected = connectTo(probe.get(), address);
    if (connected == 0 || connected == -EAGAIN) {
        fail(address.sun_path, "somebody serves this channel already");
    }
    if (connected != -ECONNREFUSED) {
        failWith(-connected, address.sun_path);
    }
    if (unlink(address.sun_path) != 0) {
        failWith(errno, address.sun_path);
    }
}

// A socket that only its owner may connect to, whatever the caller's umask.
UniqueFd listenAt(const sockaddr_un& address) {
    UniqueFd listener = openMessageSocket();
    if (listener.get() < 0 || fchmod(listener.get(), S_IRUSR | S_IWUSR) != 0 ||
        bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0 ||
        listen(listener.get(), SOMAXCONN) != 0) {
        failWith(errno, address.sun_path);
    }
    return listener;
}

}  // namespace

ChannelServer::~ChannelServer() {
    // While it still listens nobody else takes the path, so the socket removed is the own one.
    for (const Channel& channel : mChannels) {
        unlink(channel.address.sun_path);
    }
}

void ChannelServer::open(std::string_view channel, RequestHandler handler) {
    const auto address = channelAddress(channel);
    if (!address) {
        fail(std::string(channelFolder()).append("/").append(channel),
             "is no path of a channel: it is too long, or the name is none");
    }
    const UniqueFd locked = lockFolder();
    removeDeadSocket(*address);
    mChannels.push_back({listenAt(*address), *address, std::move(handler)});
}

void ChannelServer::run(int stop) {
    std::vector<pollfd> polled;
    for (;;) {
        const int time = collectEvents(stop, polled);
        if (poll(polled.data(), polled.size(), time) < 0) {
            if (errno == EINTR) {
                continue;
            }
            throw std::system_error(errno, std::generic_category(), "poll");
        }
        if (polled.front().revents != 0) {
            return;
        }
        auto event = polled.cbegin() + 1;
        for (const Channel& channel : mChannels) {
            if ((event++)->revents != 0) {
                acceptFrom(channel);
            }
        }
        // Connections just accepted are at the end, where no event belongs to them yet.
        for (auto connection = mConnections.begin(); event != polled.cend(); ++event) {
            connection = serve(*connection, event->revents) ? std::next(connection)
                                                            : mConnections.erase(connection);
        }
    }
}

// What to wait for: the stop descriptor, then every channel, then every connection.
// Returns the time to wait at most in milliseconds, negative for any time.
int ChannelServer::collectEvents(int stop, std::vector<pollfd>& polled) const {
    polled.assign(1, {stop, POLLIN, 0});
    const auto now = Clock::now();
    int time = -1;
    const auto waitUntil = [&](Clock::time_point then) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(then - now);
        const int leftTime = static_cast<int>(std::min<int64_t>(left.count(), kWaitMaxMs));
        time = time < 0 ? leftTime : std::min(time, leftTime);
    };
    short accepted = mConnections.size() < kConnectionsMax ? POLLIN : 0;
    if (mAcceptFrom > now) {
        accepted = 0;
        waitUntil(mAcceptFrom);
    }
    for (const Channel& channel : mChannels) {
        polled.push_back({channel.listener.get(), accepted, 0});
    }
    for (const Connection& connection : mConnections) {
        short events = connection.outgoing.empty() ? POLLIN : POLLOUT;
        if (!connection.outgoing.empty() && connection.due > now) {
            events = 0;
            waitUntil(connection.due);
        }
        polled.push_back({connection.socket.get(), events, 0});
    }
    return time;
}

void ChannelServer::acceptFrom(const Channel& channel) {
    UniqueFd socket(
        accept4(channel.listener.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (socket.get() >= 0) {
        mConnections.push_back({std::move(socket), &channel.handler});
    } else if (errno != EAGAIN && errno != ECONNABORTED) {
        mAcceptFrom = Clock::now() + kAcceptPause;
    }
}

// Does what the connection is ready for. Returns whether it goes on.
bool ChannelServer::serve(Connection& connection, short events) {
    if (connection.outgoing.empty()) {
        if (events != 0 && !receiveRequest(connection)) {
            return false;
        }
    } else if ((events & (POLLHUP | POLLERR)) != 0) {
        return false;
    }
    return sendReplies(connection);
}

bool ChannelServer::receiveRequest(Connection& connection) {
    std::byte request[VX_IPC_MESSAGE_MAX];
    const int length = receiveMessage(connection.socket.get(), request);
    if (length < 0) {
        return length == -EAGAIN;
    }
    Reply reply = (*connection.handler)(std::span(request).first(static_cast<size_t>(length)));
    std::move(reply.messages.begin(), reply.messages.end(),
              std::back_inserter(connection.outgoing));
    connection.due = Clock::now() + reply.delay;
    connection.closing = reply.close;
    return true;
}

bool ChannelServer::sendReplies(Connection& connection) {
    while (!connection.outgoing.empty()) {
        if (connection.due > Clock::now()) {
            return true;
        }
        const int sent = sendMessage(connection.socket.get(), connection.outgoing.front());
        if (sent < 0) {
            return sent == -EAGAIN;
        }
        connection.outgoing.pop_front();
    }
    return !connection.closing;
}

}  // namespace host

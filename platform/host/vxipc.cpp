// The message-passing library on the host: an endpoint is one connection to the channel's socket.
// Failures are negative errno values; a receive waits for at most a second.
#include <mediacheckd/platform/vxipc.h>

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <ctime>
#include <span>
#include <string_view>
#include <utility>

#include "platform/host/channel_address.h"
#include "platform/host/message_socket.h"

namespace {

using host::UniqueFd;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kReceiveTime{1};

enum class Phase : uint32_t {
    kReleased,  // as in a zero-filled record
    kFresh,     // nothing was sent on this connection
    kAwaiting,  // a reply may still be under way
    kAnswered,  // the last receive delivered a message
};

// What the opaque record holds.
struct Endpoint {
    Phase phase;
    int32_t socket;  // negative while there is no connection
    char channel[host::kChannelNameMax + 1];
};
static_assert(sizeof(Endpoint) <= sizeof(vxIpcEndpoint));

// The endpoint kept in the caller's record, written back when its use ends.
class EndpointAccess {
  public:
    explicit EndpointAccess(vxIpcEndpoint* record) noexcept : mRecord(record) {
        std::memcpy(&mEndpoint, record->opaque, sizeof(mEndpoint));
    }
    ~EndpointAccess() { std::memcpy(mRecord->opaque, &mEndpoint, sizeof(mEndpoint)); }
    EndpointAccess(const EndpointAccess&) = delete;
    EndpointAccess& operator=(const EndpointAccess&) = delete;

    Endpoint* operator->() noexcept { return &mEndpoint; }
    Endpoint& operator*() noexcept { return mEndpoint; }

  private:
    vxIpcEndpoint* mRecord;
    Endpoint mEndpoint;
};

void disconnect(Endpoint& endpoint) noexcept {
    const UniqueFd connection(std::exchange(endpoint.socket, -1));
}

// Puts the endpoint on a connection of its own that nothing was sent on yet.
int connectAnew(Endpoint& endpoint) noexcept {
    disconnect(endpoint);
    const auto address = host::channelAddress(endpoint.channel);
    if (!address) {
        return -EINVAL;
    }
    UniqueFd connection = host::openMessageSocket();
    if (connection.get() < 0) {
        return -errno;
    }
    if (const int result = host::connectTo(connection.get(), *address); result < 0) {
        return result;
    }
    if (const int result = host::checkPeer(connection.get()); result < 0) {
        return result;
    }
    endpoint.socket = connection.release();
    endpoint.phase = Phase::kFresh;
    return 0;
}

// Whether the next reply on this connection can only be the one to the next request: every reply to
// an earlier one has been received, and nothing is left in the queue.
bool isQuiet(const Endpoint& endpoint) noexcept {
    if (endpoint.phase != Phase::kAnswered) {
        return endpoint.phase == Phase::kFresh;
    }
    pollfd connection{endpoint.socket, POLLIN, 0};
    return poll(&connection, 1, 0) == 0;
}

// Waits for a message until the deadline. Returns 0 or a negative errno.
int awaitMessage(int socket, Clock::time_point deadline) noexcept {
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::nanoseconds>(
            std::max(deadline - Clock::now(), Clock::duration::zero()));
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
        const timespec time{static_cast<time_t>(seconds.count()),
                            static_cast<long>((left - seconds).count())};
        pollfd connection{socket, POLLIN, 0};
        const int ready = ppoll(&connection, 1, &time, nullptr);
        if (ready > 0) {
            return 0;
        }
        if (ready == 0) {
            return -ETIMEDOUT;
        }
        if (errno != EINTR) {
            return -errno;
        }
    }
}

int receiveWithin(int socket, std::span<std::byte> buffer) noexcept {
    if (const int result = awaitMessage(socket, Clock::now() + kReceiveTime); result < 0) {
        return result;
    }
    return host::receiveMessage(socket, buffer);
}

}  // namespace

extern "C" int vxIpcInit(const char* channel, vxIpcEndpoint* endpoint) {
    if (channel == nullptr || endpoint == nullptr) {
        return -EINVAL;
    }
    const std::string_view name = channel;
    if (name.size() > host::kChannelNameMax) {
        return -EINVAL;
    }
    Endpoint opened{};
    name.copy(opened.channel, name.size());
    opened.socket = -1;
    const int result = connectAnew(opened);
    if (result == 0) {
        std::memcpy(endpoint->opaque, &opened, sizeof(opened));
    }
    return result;
}

extern "C" int vxIpcSend(vxIpcEndpoint* endpoint, const void* message, int length) {
    if (endpoint == nullptr || length < 0 || length > VX_IPC_MESSAGE_MAX ||
        (message == nullptr && length > 0)) {
        return -EINVAL;
    }
    EndpointAccess access(endpoint);
    if (access->phase == Phase::kReleased) {
        return -EBADF;
    }
    // A late reply dies with the connection that it was to come on.
    if (!isQuiet(*access)) {
        access->phase = Phase::kAwaiting;
        if (const int result = connectAnew(*access); result < 0) {
            return result;
        }
    }
    access->phase = Phase::kAwaiting;
    return host::sendMessage(access->socket, std::span(static_cast<const std::byte*>(message),
                                                       static_cast<std::size_t>(length)));
}

extern "C" int vxIpcReceive(vxIpcEndpoint* endpoint, void* buffer, int size) {
    if (endpoint == nullptr || size < 0 || (buffer == nullptr && size > 0)) {
        return -EINVAL;
    }
    EndpointAccess access(endpoint);
    if (access->phase == Phase::kReleased || access->socket < 0) {
        return -EBADF;
    }
    const int length = receiveWithin(
        access->socket, std::span(static_cast<std::byte*>(buffer), static_cast<std::size_t>(size)));
    access->phase = length < 0 ? Phase::kAwaiting : Phase::kAnswered;
    return length;
}

extern "C" void vxIpcDestroy(vxIpcEndpoint* endpoint) {
    if (endpoint == nullptr) {
        return;
    }
    EndpointAccess access(endpoint);
    if (access->phase != Phase::kReleased) {
        disconnect(*access);
        *access = Endpoint{};
    }
}

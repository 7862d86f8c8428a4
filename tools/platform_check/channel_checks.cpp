// The channel: whole messages, lengths, negative results.
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "tools/platform_check/check.h"
#include <mediacheckd/platform/vxipc.h>

namespace {

constexpr const char* kDatabase = "rtos_media_db";

// The media histogram: command 10, one entry, a token. The database answers with 148 bytes.
constexpr unsigned char kRequest[] = {10, 0, 0, 0, 1, 0, 0, 0, 'c', 'h', 'e', 'k'};
constexpr int kReplySize = 148;

using Message = Guarded<std::array<unsigned char, VX_IPC_MESSAGE_MAX>>;

class Endpoint {
  public:
    explicit Endpoint(const char* channel) : mResult(vxIpcInit(channel, &mGuarded.record)) {}
    ~Endpoint() {
        if (mResult >= 0) {
            vxIpcDestroy(&mGuarded.record);
        }
    }
    Endpoint(const Endpoint&) = delete;
    Endpoint& operator=(const Endpoint&) = delete;

    [[nodiscard]] int result() const { return mResult; }
    [[nodiscard]] bool intact() const { return mGuarded.intact(); }

    int send() { return vxIpcSend(&mGuarded.record, kRequest, sizeof kRequest); }
    int receive(void* buffer, int size) { return vxIpcReceive(&mGuarded.record, buffer, size); }

    // Sends the request and receives into the buffer. Returns the first negative result.
    int exchange(void* buffer, int size) {
        const int sent = send();
        return sent < 0 ? sent : receive(buffer, size);
    }

  private:
    Guarded<vxIpcEndpoint> mGuarded;
    int mResult;
};

Outcome refusesUnknownChannel() {
    const Endpoint endpoint("mediacheckd-nobody");
    return endpoint.result() < 0 ? "" : saw("vxIpcInit", endpoint.result());
}

Outcome opensDatabase() {
    const Endpoint endpoint(kDatabase);
    return endpoint.result() >= 0 ? "" : saw("vxIpcInit", endpoint.result());
}

Outcome answersInOneMessage() {
    Endpoint endpoint(kDatabase);
    Message message;
    for (int i = 0; i < 3; ++i) {
        const int received = endpoint.exchange(message.record.data(), VX_IPC_MESSAGE_MAX);
        if (received != kReplySize) {
            return saw("the exchange", received);
        }
    }
    return message.intact() && endpoint.intact() ? "" : "bytes beside the buffer were written";
}

Outcome writesTheMessageOnly() {
    Endpoint endpoint(kDatabase);
    Message message;
    message.record.fill(0x5A);
    const int received = endpoint.exchange(message.record.data(), VX_IPC_MESSAGE_MAX);
    if (received < 0) {
        return saw("the exchange", received);
    }
    const auto behind = std::span(message.record).subspan(static_cast<size_t>(received));
    return std::ranges::all_of(behind, [](unsigned char byte) { return byte == 0x5A; })
               ? ""
               : "bytes behind the message were written";
}

Outcome fitsExactly() {
    Endpoint endpoint(kDatabase);
    Guarded<std::array<unsigned char, kReplySize>> exact;
    const int received = endpoint.exchange(exact.record.data(), kReplySize);
    return received == kReplySize && exact.intact() ? "" : saw("vxIpcReceive", received);
}

Outcome refusesShortBuffer() {
    Endpoint endpoint(kDatabase);
    Guarded<std::array<unsigned char, 8>> small;
    const int received = endpoint.exchange(small.record.data(), 8);
    if (!small.intact()) {
        return "bytes behind the buffer were written";
    }
    return received < 0 ? "" : saw("vxIpcReceive", received);
}

Outcome servesEndpointsInTurn() {
    for (int i = 0; i < 100; ++i) {
        Endpoint endpoint(kDatabase);
        Message message;
        const int received = endpoint.exchange(message.record.data(), VX_IPC_MESSAGE_MAX);
        if (received < 0) {
            return saw("the exchange", received) + " after " + std::to_string(i) + " endpoints";
        }
    }
    return "";
}

constexpr Check kChecks[] = {
    {"vxIpcInit: a channel that nobody serves gives a negative number", refusesUnknownChannel},
    {"vxIpcInit: \"rtos_media_db\" opens", opensDatabase},
    {"vxIpcReceive: one message answers each send, with its length", answersInOneMessage},
    {"vxIpcReceive: nothing behind the message's length is written", writesTheMessageOnly},
    {"vxIpcReceive: a buffer of the message's size takes it", fitsExactly},
    {"vxIpcReceive: a message longer than the buffer gives a negative number", refusesShortBuffer},
    {"vxIpcDestroy: a hundred endpoints one after the other are served", servesEndpointsInTurn},
};

// Whoever is asked goes away: at the latest the exchange after that has to fail, not to hang.
Outcome noticesLostPeer() {
    Endpoint endpoint(kDatabase);
    Message message;
    int result = endpoint.result();
    while (result >= 0) {
        result = endpoint.exchange(message.record.data(), VX_IPC_MESSAGE_MAX);
    }
    return "";
}

}  // namespace

std::span<const Check> channelChecks() {
    return kChecks;
}

const Check kPeerGoneCheck = {"vxIpcReceive: a peer that goes away gives a negative number",
                              noticesLostPeer};

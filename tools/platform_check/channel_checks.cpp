// The channel: whole messages, lengths, negative results.
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "tools/platform_check/check.h"
#include <mediacheckd/platform/vxipc.h>
#include <mediacheckd/vxMediaRTOSDB/db_requests.h>
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>

namespace {

constexpr const char* kDatabase = "rtos_media_db";

constexpr db_request_header kHistogramRequest = {{{DB_CMD_MEDIA_HISTOGRAM}}, {{1}}, {{1}}};
constexpr int kReplySize = sizeof(db_histogram_response);

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

    int receive(void* buffer, int size) { return vxIpcReceive(&mGuarded.record, buffer, size); }

    // Sends the request and receives into the buffer. Returns the first negative result.
    template <typename Request = db_request_header>
    int exchange(void* buffer, int size, const Request& request = kHistogramRequest) {
        if (mResult < 0) {
            return mResult;
        }
        const int sent = vxIpcSend(&mGuarded.record, &request, sizeof request);
        return sent < 0 ? sent : receive(buffer, size);
    }

  private:
    Guarded<vxIpcEndpoint> mGuarded;
    int mResult;
};

// Asks for the histogram and receives the reply.
Outcome expectReply(Endpoint& endpoint) {
    Message message;
    const int received = endpoint.exchange(message.record.data(), VX_IPC_MESSAGE_MAX);
    if (!message.intact() || !endpoint.intact()) {
        return {false, "bytes beside the records were written"};
    }
    return {received == kReplySize, returned("the exchange", received)};
}

Outcome refusesUnknownChannel() {
    const Endpoint endpoint("mediacheckd-nobody");
    return {endpoint.result() < 0, returned("vxIpcInit", endpoint.result())};
}

Outcome opensDatabase() {
    const Endpoint endpoint(kDatabase);
    return {endpoint.result() >= 0, returned("vxIpcInit", endpoint.result())};
}

Outcome answersInOneMessage() {
    Endpoint endpoint(kDatabase);
    Outcome outcome = expectReply(endpoint);
    for (int i = 1; i < 3 && outcome.kept; ++i) {
        outcome = expectReply(endpoint);
    }
    return outcome;
}

Outcome writesTheMessageOnly() {
    Endpoint endpoint(kDatabase);
    Message message;
    message.record.fill(0x5A);
    const int received = endpoint.exchange(message.record.data(), VX_IPC_MESSAGE_MAX);
    if (received < 0 || received > VX_IPC_MESSAGE_MAX) {
        return {false, returned("the exchange", received)};
    }
    const auto behind = std::span(message.record).subspan(static_cast<size_t>(received));
    const auto written = behind.size() - static_cast<size_t>(std::ranges::count(behind, 0x5A));
    return {written == 0, std::to_string(written) + " bytes"};
}

Outcome fitsExactly() {
    Endpoint endpoint(kDatabase);
    Guarded<std::array<unsigned char, kReplySize>> exact;
    const int received = endpoint.exchange(exact.record.data(), kReplySize);
    if (!exact.intact()) {
        return {false, "bytes behind the buffer were written"};
    }
    return {received == kReplySize, returned("vxIpcReceive", received)};
}

Outcome refusesShortBuffer() {
    Endpoint endpoint(kDatabase);
    if (endpoint.result() < 0) {
        return {false, returned("vxIpcInit", endpoint.result())};
    }
    Guarded<std::array<unsigned char, 8>> small;
    const int received = endpoint.exchange(small.record.data(), 8);
    if (!small.intact()) {
        return {false, "bytes behind the buffer were written"};
    }
    return {received < 0, returned("vxIpcReceive", received)};
}

// The endpoint may be of no more use then; whatever it still gives has to be a whole message.
Outcome dropsTheRest() {
    Endpoint endpoint(kDatabase);
    if (endpoint.result() < 0) {
        return {false, returned("vxIpcInit", endpoint.result())};
    }
    unsigned char small[8];
    endpoint.exchange(small, sizeof small);
    Message message;
    const int received = endpoint.exchange(message.record.data(), VX_IPC_MESSAGE_MAX);
    return {received < 0 || received == kReplySize, returned("the next exchange", received)};
}

Outcome servesEndpointsInTurn() {
    for (int i = 0; i < 100; ++i) {
        Endpoint endpoint(kDatabase);
        Message message;
        const int received = endpoint.exchange(message.record.data(), VX_IPC_MESSAGE_MAX);
        if (received < 0) {
            return {false, returned("the exchange", received) + " after " + std::to_string(i) +
                               " endpoints"};
        }
    }
    return {true, ""};
}

constexpr Check kChecks[] = {
    {"vxIpcInit: a channel that nobody serves gives a negative number", refusesUnknownChannel},
    {"vxIpcInit: \"rtos_media_db\" opens", opensDatabase},
    {"vxIpcReceive: one message answers each send, with its length", answersInOneMessage},
    {"vxIpcReceive: nothing behind the message's length is written", writesTheMessageOnly},
    {"vxIpcReceive: a buffer of the message's size takes it", fitsExactly},
    {"vxIpcReceive: a message longer than the buffer gives a negative number", refusesShortBuffer},
    {"vxIpcReceive: the rest of such a message is no message", dropsTheRest},
    {"vxIpcDestroy: a hundred endpoints one after the other are served", servesEndpointsInTurn},
};

}  // namespace

std::span<const Check> channelChecks() {
    return kChecks;
}

Outcome receivesMessageByMessage(const std::string& directory) {
    Endpoint endpoint(kDatabase);
    db_scandir_request request = {};
    request.header.command_type = DB_CMD_NON_DB_SCANDIR;
    request.header.request_count = 1;
    directory.copy(request.dir_name, kDirNameSize);
    Message message;
    int received = endpoint.exchange(message.record.data(), VX_IPC_MESSAGE_MAX, request);
    db_scandir_response_header header = {};
    std::memcpy(&header, message.record.data(), sizeof header);
    if (received < static_cast<int>(sizeof header) || header.status != 0) {
        return {false, "the directory is not answered for: " + returned("the exchange", received)};
    }
    size_t entries = static_cast<size_t>(received) - sizeof header;
    for (uint32_t i = 1; i < header.number_transfers; ++i) {
        startPatienceAnew();
        received = endpoint.receive(message.record.data(), VX_IPC_MESSAGE_MAX);
        if (received < 0) {
            return {false, returned("vxIpcReceive", received)};
        }
        entries += static_cast<size_t>(received);
    }
    const uint64_t expected = uint64_t{header.number_file_names} * sizeof(scandir_result_item);
    return {entries == expected && expectReply(endpoint).kept,
            std::to_string(entries) +
                " bytes of entries, messages: " + std::to_string(header.number_transfers)};
}

Outcome noticesLostPeer() {
    Endpoint endpoint(kDatabase);
    Message message;
    int exchanges = 0;
    int received = 0;
    while ((received = endpoint.exchange(message.record.data(), VX_IPC_MESSAGE_MAX)) >= 0) {
        startPatienceAnew();
        ++exchanges;
    }
    const bool wasThere = exchanges > 0;
    return {wasThere, wasThere ? returned("the exchange", received) : "the database was not there"};
}

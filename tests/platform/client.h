// A client of a channel, with requests and replies as text.
#pragma once

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <string>
#include <string_view>

#include "platform/host/channel_address.h"
#include "platform/host/message_socket.h"
#include <mediacheckd/platform/vxipc.h>

struct Client {
    explicit Client(const std::string& channel) : opened(vxIpcInit(channel.c_str(), &endpoint)) {}
    ~Client() { vxIpcDestroy(&endpoint); }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    int send(std::string_view request) {
        return vxIpcSend(&endpoint, request.data(), static_cast<int>(request.size()));
    }
    int receive() { return vxIpcReceive(&endpoint, buffer, sizeof(buffer)); }

    // Returns the reply; "send failed" or "receive failed" where there is none.
    std::string exchange(std::string_view request) {
        if (send(request) < 0) {
            return "send failed";
        }
        const int length = receive();
        return length < 0 ? "receive failed" : std::string(buffer, static_cast<size_t>(length));
    }

    vxIpcEndpoint endpoint{};
    const int opened;
    char buffer[VX_IPC_MESSAGE_MAX];
};

// A socket in the channel's place.
inline host::UniqueFd bindSocket(std::string_view channel) {
    host::UniqueFd bound = host::openMessageSocket();
    const auto address = *host::channelAddress(channel);
    EXPECT_EQ(bind(bound.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    return bound;
}

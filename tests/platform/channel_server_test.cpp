#include "platform/host/channel_server.h"

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>

#include "platform/host/channel_address.h"
#include "platform/host/message_socket.h"
#include "platform/host/stop_signals.h"
#include "platform/vxipc.h"
#include "tests/support/channel_thread.h"

namespace {

namespace fs = std::filesystem;

constexpr char kChannel[] = "served";
const std::string kSocket = std::string(host::kChannelFolder) + "/" + kChannel;

host::Reply echo(std::span<const std::byte> request) {
    return {.messages = {{request.begin(), request.end()}}};
}

// Sends a byte and gives the one that comes back, or -1.
int ask(vxIpcEndpoint& endpoint, unsigned char byte) {
    const bool answered =
        vxIpcSend(&endpoint, &byte, 1) >= 0 && vxIpcReceive(&endpoint, &byte, 1) == 1;
    return answered ? byte : -1;
}

TEST(ChannelServer, takesTheChannelOnlyWhenNobodyServesIt) {
    fs::remove_all(host::kChannelFolder);
    umask(0);
    const auto opens = [] {
        host::ChannelServer server;
        try {
            server.open(kChannel, echo);
            return true;
        } catch (const std::runtime_error& error) {
            EXPECT_THAT(error.what(), testing::HasSubstr(host::kChannelFolder));
            return false;
        }
    };
    {
        const ChannelThread live(kChannel, echo);
        EXPECT_EQ(fs::status(host::kChannelFolder).permissions(), fs::perms(0700));
        EXPECT_EQ(fs::status(kSocket).permissions(), fs::perms(0600));
        EXPECT_FALSE(opens()) << "served";
        EXPECT_TRUE(fs::exists(kSocket)) << "the live server's socket stays";
    }
    EXPECT_FALSE(fs::exists(kSocket)) << "removed at the end";

    const auto address = *host::channelAddress(kChannel);
    {
        const host::UniqueFd dead = host::openMessageSocket();
        const auto* place = reinterpret_cast<const sockaddr*>(&address);
        ASSERT_EQ(bind(dead.get(), place, sizeof(address)), 0);
        fs::permissions(kSocket, fs::perms(0600));
    }
    EXPECT_TRUE(opens()) << "stale";

    std::ofstream(kSocket) << "a file";
    EXPECT_FALSE(opens());
    EXPECT_TRUE(fs::remove(kSocket)) << "a file is not taken for a stale socket";
    fs::permissions(host::kChannelFolder, fs::perms(0777));
    EXPECT_FALSE(opens());
    fs::permissions(host::kChannelFolder, fs::perms(0700));
    EXPECT_TRUE(opens());
}

TEST(ChannelServer, servesManyConnectionsWhoeverReadsSlowly) {
    constexpr size_t kFlood = 400;
    const ChannelThread server(kChannel, [](std::span<const std::byte> request) {
        const size_t messages = request[0] == std::byte{0} ? kFlood : 1;
        return host::Reply{
            .messages = std::vector<host::Message>(messages, {request.begin(), request.end()})};
    });
    vxIpcEndpoint slow{};
    ASSERT_GE(vxIpcInit(kChannel, &slow), 0);
    ASSERT_EQ(ask(slow, 0), 0);

    std::vector<vxIpcEndpoint> others(100);
    for (auto& endpoint : others) {
        ASSERT_GE(vxIpcInit(kChannel, &endpoint), 0);
    }
    for (int round = 0; round < 2; ++round) {
        for (size_t i = 1; i <= others.size(); ++i) {
            EXPECT_EQ(ask(others[i - 1], static_cast<unsigned char>(i)), static_cast<int>(i));
        }
    }
    std::ranges::for_each(others, [](vxIpcEndpoint& endpoint) { vxIpcDestroy(&endpoint); });
    char byte = 1;
    for (size_t received = 1; received < kFlood; ++received) {
        ASSERT_EQ(vxIpcReceive(&slow, &byte, 1), 1) << received;
    }
    vxIpcDestroy(&slow);
}

TEST(ChannelServer, servesSeveralChannelsUntilASignalComes) {
    const host::UniqueFd stop = host::openStopSignals();
    std::thread serving([&] {
        host::ChannelServer server;
        server.open("one", echo);
        server.open("two", [](std::span<const std::byte>) {
            return host::Reply{.messages = {{std::byte{2}}}};
        });
        server.run(stop.get());
    });
    const auto askOn = [](const char* channel) {
        vxIpcEndpoint endpoint{};
        while (vxIpcInit(channel, &endpoint) < 0) {
            std::this_thread::yield();
        }
        const int answer = ask(endpoint, 1);
        vxIpcDestroy(&endpoint);
        return answer;
    };
    EXPECT_EQ(askOn("one"), 1);
    EXPECT_EQ(askOn("two"), 2);
    kill(getpid(), SIGTERM);
    serving.join();
    EXPECT_TRUE(fs::is_empty(host::kChannelFolder));
}

}  // namespace

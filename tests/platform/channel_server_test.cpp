#include "platform/host/channel_server.h"

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <csignal>
#include <cstring>
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

// Sends a number and gives what comes back, or -1.
int ask(vxIpcEndpoint& endpoint, int number) {
    int answer = -1;
    if (vxIpcSend(&endpoint, &number, sizeof(number)) < 0 ||
        vxIpcReceive(&endpoint, &answer, sizeof(answer)) != sizeof(answer)) {
        return -1;
    }
    return answer;
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
        struct stat folder {};
        struct stat socket {};
        ASSERT_EQ(lstat(host::kChannelFolder, &folder) | lstat(kSocket.c_str(), &socket), 0);
        EXPECT_EQ(folder.st_mode, S_IFDIR | 0700u);
        EXPECT_EQ(socket.st_mode, S_IFSOCK | 0600u);
        EXPECT_FALSE(opens()) << "served";
        EXPECT_TRUE(fs::exists(kSocket)) << "the live server's socket stays";
    }
    EXPECT_FALSE(fs::exists(kSocket)) << "removed at the end";

    const auto address = *host::channelAddress(kChannel);
    {
        const host::UniqueFd dead = host::openMessageSocket();
        ASSERT_EQ(bind(dead.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)),
                  0);
        ASSERT_EQ(chmod(kSocket.c_str(), 0600), 0);
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
        const size_t messages = request.size() == 1 ? kFlood : 1;
        return host::Reply{
            .messages = std::vector<host::Message>(messages, {request.begin(), request.end()})};
    });
    vxIpcEndpoint slow{};
    ASSERT_GE(vxIpcInit(kChannel, &slow), 0);
    ASSERT_GE(vxIpcSend(&slow, "f", 1), 0);

    std::vector<vxIpcEndpoint> others(100);
    for (auto& endpoint : others) {
        ASSERT_GE(vxIpcInit(kChannel, &endpoint), 0);
    }
    for (int round = 0; round < 2; ++round) {
        for (size_t i = 0; i < others.size(); ++i) {
            EXPECT_EQ(ask(others[i], static_cast<int>(i)), static_cast<int>(i));
        }
    }
    for (auto& endpoint : others) {
        vxIpcDestroy(&endpoint);
    }
    char byte = 0;
    for (size_t received = 0; received < kFlood; ++received) {
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
            const int two = 2;
            const auto bytes = std::as_bytes(std::span(&two, 1));
            return host::Reply{.messages = {{bytes.begin(), bytes.end()}}};
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

#include "platform/host/channel_server.h"

#include <gmock/gmock.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <chrono>
#include <ctime>
#include <deque>
#include <filesystem>
#include <fstream>
#include <thread>

#include "tests/platform/client.h"
#include "tests/support/channel_thread.h"

namespace {

namespace fs = std::filesystem;

constexpr char kChannel[] = "served";
const std::string kSocket = std::string(host::kChannelFolder) + "/" + kChannel;

host::Reply echo(std::span<const std::byte> request) {
    return {.messages = {{request.begin(), request.end()}}};
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
    (void)bindSocket(kChannel);
    fs::permissions(kSocket, fs::perms(0600));
    EXPECT_TRUE(opens()) << "stale";

    std::ofstream(kSocket) << "a file";
    EXPECT_FALSE(opens());
    EXPECT_TRUE(fs::remove(kSocket)) << "a file is not taken for a stale socket";
    fs::permissions(host::kChannelFolder, fs::perms(0777));
    EXPECT_FALSE(opens());
    fs::permissions(host::kChannelFolder, fs::perms(0700));
    EXPECT_TRUE(opens());
}

TEST(ChannelServer, livesInTheFolderThatTheEnvironmentNames) {
    const ChannelThread usual(kChannel, echo);
    for (const auto& [folder, good] : {std::pair(std::string("/tmp/elsewhere"), true),
                                       std::pair("/tmp/" + std::string(100, 'x'), false)}) {
        setenv(host::kChannelFolderVariable, folder.c_str(), 1);
        EXPECT_LT(Client(kChannel).opened, 0) << "nobody is there yet";
        host::ChannelServer server;
        if (good) {
            EXPECT_NO_THROW(server.open(kChannel, echo));
        } else {
            EXPECT_THROW(server.open(kChannel, echo), std::runtime_error);
        }
        EXPECT_EQ(Client(kChannel).opened == 0, good);
    }
    unsetenv(host::kChannelFolderVariable);
    EXPECT_EQ(Client(kChannel).exchange("usual"), "usual");
}

TEST(ChannelServer, waitsAtRestForADescriptorToAcceptAClient) {
    const ChannelThread server(kChannel, echo);
    Client served(kChannel);
    ASSERT_EQ(served.exchange("served"), "served");
    const host::UniqueFd waiting = host::openMessageSocket();
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlimit full{static_cast<rlim_t>(waiting.get()) + 1, limit.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &full), 0);
    ASSERT_EQ(host::connectTo(waiting.get(), *host::channelAddress(kChannel)), 0);
    const std::clock_t before = std::clock();
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 10) << "it turns in a circle";
    EXPECT_EQ(served.exchange("meanwhile"), "meanwhile");
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
    ASSERT_EQ(send(waiting.get(), "late", 4, 0), 4);
    pollfd replied{waiting.get(), POLLIN, 0};
    EXPECT_EQ(poll(&replied, 1, 5000), 1) << "never accepted";
}

TEST(ChannelServer, servesManyConnectionsWhoeverReadsSlowly) {
    constexpr size_t kFlood = 400;
    const ChannelThread server(kChannel, [](std::span<const std::byte> request) {
        const host::Message message(request.begin(), request.end());
        return host::Reply{.messages = std::vector(request.empty() ? kFlood : 1, message)};
    });
    Client slow(kChannel);
    ASSERT_EQ(slow.exchange(""), "");
    std::deque<Client> others;
    for (size_t i = 0; i < 200; ++i) {
        Client& other = i < 100 ? others.emplace_back(kChannel) : others[i - 100];
        EXPECT_EQ(other.exchange(std::to_string(i)), std::to_string(i));
    }
    for (size_t received = 1; received < kFlood; ++received) {
        ASSERT_EQ(slow.receive(), 0) << received;
    }
}

}  // namespace

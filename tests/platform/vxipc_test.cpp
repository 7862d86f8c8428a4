#include <mediacheckd/platform/vxipc.h>

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <map>

#include "tests/platform/client.h"
#include "tests/support/channel_thread.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr char kChannel[] = "test";

host::Message message(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

// The requests are orders: what is not named here is echoed.
host::Reply obey(std::span<const std::byte> request) {
    static const std::map<std::string, host::Reply> kReplies = {
        {"", {.messages = {message("nothing asked")}}},
        {"nothing", {}},
        {"empty", {.messages = {{}}}},
        {"close", {.close = true}},
        {"two", {.messages = {message("first"), message("second")}}},
        {"late", {.messages = {message("late")}, .delay = 1200ms}},
        {"slow", {.messages = {message("slow")}, .delay = 400ms}},
        {"full", {.messages = {host::Message(1500)}}},
        {"one too long", {.messages = {host::Message(1501)}}},
    };
    const std::string order(reinterpret_cast<const char*>(request.data()), request.size());
    const auto reply = kReplies.find(order);
    return reply != kReplies.end() ? reply->second : host::Reply{.messages = {message(order)}};
}

struct VxIpc : testing::Test {
    ChannelThread server{kChannel, obey};
    Client client{kChannel};
};

TEST_F(VxIpc, receivesOneWholeMessageOrFails) {
    const std::pair<const char*, int> cases[] = {
        {"hello", 5},
        {"", 13},
        {"empty", 0},
        {"full", 1500},
        {"one too long", -EMSGSIZE},
        {"nothing", -ETIMEDOUT},
        {"close", -ECONNRESET},
    };
    for (const auto& [order, result] : cases) {
        ASSERT_GE(client.send(order), 0) << order;
        EXPECT_EQ(client.receive(), result) << order;
    }
    EXPECT_EQ(client.receive(), -ECONNRESET) << "a closed peer is no message of no bytes";
    EXPECT_EQ(client.exchange("after all that"), "after all that");
}

TEST_F(VxIpc, aLateReplyNeverAnswersALaterRequest) {
    EXPECT_EQ(client.exchange("late"), "receive failed");
    EXPECT_EQ(client.exchange("under way"), "under way");

    EXPECT_EQ(client.exchange("late"), "receive failed");
    std::this_thread::sleep_for(400ms);
    EXPECT_EQ(client.exchange("arrived"), "arrived");

    EXPECT_EQ(client.exchange("two"), "first");
    EXPECT_EQ(client.receive(), 6) << "the second message of the same reply";
    EXPECT_EQ(client.exchange("two"), "first");
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(client.exchange("left over"), "left over");

    EXPECT_EQ(client.send("slow"), 0);
    EXPECT_EQ(client.exchange("never asked for"), "never asked for");
}

TEST_F(VxIpc, signalsNeitherEndNorProlongAReceive) {
    signal(SIGALRM, [](int) {});
    ualarm(30'000, 30'000);
    EXPECT_EQ(client.exchange("slow"), "slow");
    const auto start = Clock::now();
    EXPECT_EQ(client.exchange("nothing"), "receive failed");
    const auto took = Clock::now() - start;
    ualarm(0, 0);
    EXPECT_TRUE(took >= 1000ms && took < 1800ms) << took.count();
}

TEST_F(VxIpc, refusesWhatIsNoMessage) {
    EXPECT_LT(vxIpcSend(&client.endpoint, client.buffer, -1), 0);
    EXPECT_LT(vxIpcSend(&client.endpoint, client.buffer, VX_IPC_MESSAGE_MAX + 1), 0);
    EXPECT_LT(vxIpcSend(&client.endpoint, nullptr, 1), 0);
    EXPECT_LT(vxIpcReceive(&client.endpoint, client.buffer, -1), 0);
    vxIpcDestroy(&client.endpoint);
    EXPECT_LT(client.send("released"), 0);
    EXPECT_LT(client.receive(), 0);
}

TEST_F(VxIpc, trustsOnlyRootAndItsOwnUser) {
    const host::UniqueFd foreign = bindSocket("foreign");
    if (seteuid(1) != 0) {
        GTEST_SKIP() << "no second user here";
    }
    const int listening = listen(foreign.get(), 1);
    ASSERT_EQ(seteuid(0), 0);
    ASSERT_EQ(listening, 0);
    const Client other("foreign");
    EXPECT_EQ(other.opened, -EACCES);
    EXPECT_THAT(other.endpoint.opaque, testing::Each(0u));
}

TEST(VxIpcWithoutServer, failsAndGoesOnWithTheNextServer) {
    EXPECT_LT(Client(kChannel).opened, 0);
    std::optional<ChannelThread> server(std::in_place, kChannel, obey);
    Client client(kChannel);
    server.reset();
    EXPECT_LT(client.send("x"), 0);
    EXPECT_LT(client.receive(), 0);
    EXPECT_LT(client.send("x"), 0);
    server.emplace(kChannel, obey);
    EXPECT_EQ(client.exchange("x"), "x");
}

TEST(VxIpcNames, nameOneSocketBelowTheFolder) {
    const std::string longest(host::kChannelNameMax, 'n');
    const ChannelThread server(longest, obey);
    EXPECT_EQ(Client(longest).opened, 0);
    for (const std::string& name : {std::string(), longest + "n", std::string(300, 'n'),
                                    "../vxipc/" + longest, std::string("a/b"), std::string(".")}) {
        EXPECT_LT(Client(name).opened, 0) << name;
        EXPECT_THROW(ChannelThread(name, obey), std::runtime_error) << name;
    }
}

}  // namespace

#include "platform/vxipc.h"

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <map>
#include <string>

#include "platform/host/channel_address.h"
#include "platform/host/message_socket.h"
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

class VxIpc : public testing::Test {
  protected:
    void SetUp() override { ASSERT_GE(vxIpcInit(kChannel, &mEndpoint), 0); }
    void TearDown() override { vxIpcDestroy(&mEndpoint); }

    int send(std::string_view order) {
        return vxIpcSend(&mEndpoint, order.data(), static_cast<int>(order.size()));
    }
    int receive() { return vxIpcReceive(&mEndpoint, mBuffer, sizeof(mBuffer)); }
    std::string exchange(std::string_view order) {
        if (send(order) < 0) {
            return "send failed";
        }
        const int length = receive();
        return length < 0 ? "receive failed" : std::string(mBuffer, static_cast<size_t>(length));
    }

    ChannelThread mServer{kChannel, obey};
    vxIpcEndpoint mEndpoint{};
    char mBuffer[VX_IPC_MESSAGE_MAX];
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
        SCOPED_TRACE(order);
        const auto start = Clock::now();
        ASSERT_GE(send(order), 0);
        EXPECT_EQ(receive(), result);
        EXPECT_GE(Clock::now() - start, result == -ETIMEDOUT ? 1000ms : 0ms);
    }
    EXPECT_EQ(receive(), -ECONNRESET) << "a closed peer is no message of no bytes";
    EXPECT_EQ(exchange("after all that"), "after all that");
}

TEST_F(VxIpc, aLateReplyNeverAnswersALaterRequest) {
    EXPECT_EQ(exchange("late"), "receive failed");
    EXPECT_EQ(exchange("under way"), "under way");

    EXPECT_EQ(exchange("late"), "receive failed");
    std::this_thread::sleep_for(400ms);
    EXPECT_EQ(exchange("arrived"), "arrived");

    EXPECT_EQ(exchange("two"), "first");
    EXPECT_EQ(receive(), 6) << "the second message of the same reply";
    EXPECT_EQ(exchange("two"), "first");
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(exchange("left over"), "left over");

    EXPECT_EQ(send("slow"), 0);
    EXPECT_EQ(exchange("never asked for"), "never asked for");
}

TEST_F(VxIpc, signalsNeitherEndNorProlongAReceive) {
    struct sigaction action {};
    action.sa_handler = [](int) {};
    sigaction(SIGALRM, &action, nullptr);
    const itimerval often{{0, 30'000}, {0, 30'000}};
    setitimer(ITIMER_REAL, &often, nullptr);
    EXPECT_EQ(exchange("slow"), "slow");
    const auto start = Clock::now();
    EXPECT_EQ(exchange("nothing"), "receive failed");
    const auto took = Clock::now() - start;
    const itimerval never{};
    setitimer(ITIMER_REAL, &never, nullptr);
    EXPECT_GE(took, 1000ms);
    EXPECT_LT(took, 1800ms);
}

TEST_F(VxIpc, refusesWhatIsNoMessage) {
    EXPECT_LT(vxIpcSend(&mEndpoint, mBuffer, -1), 0);
    EXPECT_LT(vxIpcSend(&mEndpoint, mBuffer, VX_IPC_MESSAGE_MAX + 1), 0);
    EXPECT_LT(vxIpcSend(&mEndpoint, nullptr, 1), 0);
    EXPECT_LT(vxIpcReceive(&mEndpoint, mBuffer, -1), 0);
    vxIpcDestroy(&mEndpoint);
    EXPECT_LT(send("released"), 0);
    EXPECT_LT(receive(), 0);
    vxIpcDestroy(&mEndpoint);
}

TEST_F(VxIpc, trustsOnlyRootAndItsOwnUser) {
    const auto address = *host::channelAddress("foreign");
    const host::UniqueFd foreign = host::openMessageSocket();
    ASSERT_EQ(bind(foreign.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    if (seteuid(1) != 0) {
        GTEST_SKIP() << "no second user here";
    }
    const int listening = listen(foreign.get(), 1);
    ASSERT_EQ(seteuid(0), 0);
    ASSERT_EQ(listening, 0);
    vxIpcEndpoint endpoint{};
    EXPECT_EQ(vxIpcInit("foreign", &endpoint), -EACCES);
    EXPECT_EQ(std::ranges::count(endpoint.opaque, 0u), std::ssize(endpoint.opaque));
}

TEST(VxIpcWithoutServer, failsAndGoesOnWithTheNextServer) {
    vxIpcEndpoint endpoint{};
    EXPECT_LT(vxIpcInit(kChannel, &endpoint), 0);
    char byte = 'x';
    {
        const ChannelThread server(kChannel, obey);
        ASSERT_GE(vxIpcInit(kChannel, &endpoint), 0);
    }
    EXPECT_LT(vxIpcSend(&endpoint, &byte, 1), 0);
    EXPECT_LT(vxIpcReceive(&endpoint, &byte, 1), 0);
    EXPECT_LT(vxIpcSend(&endpoint, &byte, 1), 0);
    const ChannelThread next(kChannel, obey);
    EXPECT_GE(vxIpcSend(&endpoint, &byte, 1), 0);
    EXPECT_EQ(vxIpcReceive(&endpoint, &byte, 1), 1);
    vxIpcDestroy(&endpoint);
}

TEST(VxIpcNames, nameOneSocketBelowTheFolder) {
    const std::string longest(host::kChannelNameMax, 'n');
    const ChannelThread server(longest, obey);
    vxIpcEndpoint endpoint{};
    EXPECT_GE(vxIpcInit(longest.c_str(), &endpoint), 0);
    vxIpcDestroy(&endpoint);
    for (const std::string& name : {std::string(), longest + "n", std::string(300, 'n'),
                                    "../vxipc/" + longest, std::string("a/b"), std::string(".")}) {
        EXPECT_LT(vxIpcInit(name.c_str(), &endpoint), 0) << name;
        EXPECT_THROW(ChannelThread(name, obey), std::runtime_error) << name;
    }
}

}  // namespace

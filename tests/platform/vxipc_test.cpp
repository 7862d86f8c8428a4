#include "platform/vxipc.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>

#include "platform/host/channel_address.h"
#include "tests/support/channel_thread.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr char kChannel[] = "test";
const std::string kFolder = host::kChannelFolder;
const std::string kSocket = kFolder + "/" + kChannel;

host::Message message(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

// The requests are orders: what is not named here is echoed.
host::Reply obey(std::span<const std::byte> request) {
    const std::string order(reinterpret_cast<const char*>(request.data()), request.size());
    if (order == "nothing") {
        return {};
    }
    if (order == "empty") {
        return {.messages = {{}}};
    }
    if (order == "empty, then close") {
        return {.messages = {{}}, .close = true};
    }
    if (order == "close") {
        return {.close = true};
    }
    if (order == "two") {
        return {.messages = {message("first"), message("second")}};
    }
    if (order == "late") {
        return {.messages = {message("late")}, .delay = 1200ms};
    }
    if (order == "slow") {
        return {.messages = {message("slow")}, .delay = 400ms};
    }
    if (order.starts_with("bytes ")) {
        return {.messages = {host::Message(std::stoul(order.substr(6)))}};
    }
    return {.messages = {message(order.empty() ? "nothing asked" : order)}};
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
    const struct {
        const char* order;
        int result;
    } cases[] = {
        {"hello", 5},
        {"", 13},
        {"empty", 0},
        {"bytes 1500", 1500},
        {"bytes 1501", -EMSGSIZE},
        {"close", -ECONNRESET},
        {"bytes 4000", -EMSGSIZE},
        {"nothing", -ETIMEDOUT},
        {"empty, then close", 0},
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
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(exchange("left over"), "left over");

    EXPECT_EQ(send("slow"), 0);
    EXPECT_EQ(exchange("never asked for"), "never asked for");
}

TEST_F(VxIpc, receivesEveryMessageOfOneReply) {
    EXPECT_EQ(exchange("two"), "first");
    EXPECT_EQ(receive(), 6);
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

TEST_F(VxIpc, opensOnlyWhatRootOrTheCallerOwnAlone) {
    namespace fs = std::filesystem;
    const auto mode = [](const std::string& path, mode_t bits) {
        return [=] { ASSERT_EQ(chmod(path.c_str(), bits), 0); };
    };
    const auto replaceBySymlink = [](const std::string& path) {
        return [=] {
            fs::rename(path, path + ".real");
            fs::create_symlink(path + ".real", path);
        };
    };
    const auto restore = [](const std::string& path) {
        return [=] {
            fs::remove(path);
            fs::rename(path + ".real", path);
        };
    };
    const auto owner = [](const std::string& path, uid_t user) {
        return [=] { ASSERT_EQ(lchown(path.c_str(), user, static_cast<gid_t>(-1)), 0); };
    };
    struct Case {
        const char* what;
        std::function<void()> spoil;
        std::function<void()> restore;
    };
    std::vector<Case> cases = {
        {"folder, group", mode(kFolder, 0770), mode(kFolder, 0700)},
        {"folder, others", mode(kFolder, 0707), mode(kFolder, 0700)},
        {"socket, group", mode(kSocket, 0660), mode(kSocket, 0600)},
        {"socket, others", mode(kSocket, 0602), mode(kSocket, 0600)},
        {"folder, link", replaceBySymlink(kFolder), restore(kFolder)},
        {"socket, link", replaceBySymlink(kSocket), restore(kSocket)},
    };
    if (chown(kSocket.c_str(), 1, static_cast<gid_t>(-1)) == 0) {
        owner(kSocket, 0)();
        cases.push_back({"socket, owner", owner(kSocket, 1), owner(kSocket, 0)});
        cases.push_back({"folder, owner", owner(kFolder, 1), owner(kFolder, 0)});
    }
    for (const auto& [what, spoil, repair] : cases) {
        SCOPED_TRACE(what);
        vxIpcEndpoint endpoint{};
        spoil();
        EXPECT_EQ(vxIpcInit(kChannel, &endpoint), -EACCES);
        EXPECT_EQ(exchange("open already"), "open already");
        repair();
        EXPECT_GE(vxIpcInit(kChannel, &endpoint), 0);
        vxIpcDestroy(&endpoint);
        EXPECT_EQ(std::count(std::begin(endpoint.opaque), std::end(endpoint.opaque), 0u), 47);
    }
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

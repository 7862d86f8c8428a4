// The daemon against the simulator, as processes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mqueue.h>
#include <sys/resource.h>

#include <cstring>
#include <memory>

#include "app/event_queue.h"
#include "platform/host/vxmsg_decode.h"
#include "tests/simulator/sample_card.h"
#include "tests/support/child_process.h"

namespace {

constexpr char kDump[] =
    "\nZEPMediaList::matchHistogram\\(\\) histogram dump:\n( h\\[[0-9]+\\]=[0-9]+ ){32}\n";

// Waits up to half a minute for an event, checks the whole message and returns its code.
int32_t nextEvent(mqd_t queue) {
    timespec deadline{};
    clock_gettime(CLOCK_REALTIME, &deadline);
    deadline.tv_sec += 30;
    unsigned char bytes[1500];
    unsigned priority = 1;
    const ssize_t length =
        mq_timedreceive(queue, reinterpret_cast<char*>(bytes), sizeof bytes, &priority, &deadline);
    const auto message =
        host::decodeVxmsg({bytes, static_cast<size_t>(std::max(length, ssize_t{0}))});
    if (!message || message->payload.size() != 4) {
        return -1;
    }
    EXPECT_EQ(priority, 0u);
    EXPECT_EQ(message->type, "EV");
    EXPECT_EQ(message->id, 24u);
    std::string elements;
    for (const auto& element : message->elements) {
        elements += std::to_string(element.tag) +
                    std::string(element.value.begin(), element.value.end()) + " ";
    }
    EXPECT_EQ(elements, "68/to_wom 67/to_wom 238 ");
    int32_t code = 0;
    std::memcpy(&code, message->payload.data(), sizeof code);
    return code;
}

long waiting(mqd_t queue) {
    mq_attr attributes{};
    mq_getattr(queue, &attributes);
    return attributes.mq_curmsgs;
}

std::unique_ptr<ChildProcess> simulate(const std::string& arguments) {
    auto simulator = std::make_unique<ChildProcess>(MEDIADB_SIM " " + arguments);
    EXPECT_THAT(simulator->output("\n"), testing::StartsWith("serving"));
    return simulator;
}

TEST(Daemon, PostsOneEventAndIdles) {
    const std::string empty = makeCard({}).string();
    const struct {
        std::string simulator;  // its arguments; empty: there is none
        int event;
    } cases[] = {{sampleCard(), EVENT_MATCH},
                 {empty, EVENT_NO_MATCH},
                 {"", EVENT_ERROR},
                 {sampleCard() + " --fault refuse", EVENT_ERROR},
                 {sampleCard() + " --fault no-reply", EVENT_ERROR},
                 {sampleCard() + " --fault 1:no-reply", EVENT_MATCH},
                 {sampleCard() + " --fault short=12", EVENT_NO_MATCH},
                 {sampleCard() + " --fault short=147", EVENT_MATCH},
                 {sampleCard() + " --fault status=5", EVENT_NO_MATCH},
                 {sampleCard() + " --fault wrong-token", EVENT_MATCH}};
    const mqd_t queue = openEventQueue();
    ASSERT_NE(queue, -1);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.simulator);
        const auto simulator = c.simulator.empty() ? nullptr : simulate(c.simulator);
        ChildProcess daemon("-a '%n%s' " MEDIACHECKD);
        EXPECT_EQ(nextEvent(queue), c.event);
        EXPECT_THAT(daemon.output(), testing::MatchesRegex(c.event == EVENT_ERROR ? "" : kDump));
        EXPECT_TRUE(daemon.running());
        EXPECT_EQ(waiting(queue), 0);
    }
    mq_close(queue);
    mq_unlink(kEventQueueName);
}

TEST(Daemon, WaitsForAReaderOfTheFullQueue) {
    const mqd_t queue = openEventQueue();
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(sendEvent(queue, 1000 + i), 1);
    }
    const auto simulator = simulate(sampleCard());
    ChildProcess daemon("-a '' " MEDIACHECKD);
    EXPECT_THAT(daemon.output("h[31]"), testing::HasSubstr("dump"));
    usleep(200'000);
    EXPECT_EQ(waiting(queue), 10);
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(nextEvent(queue), 1000 + i);
    }
    EXPECT_EQ(nextEvent(queue), EVENT_MATCH);
    closeEventQueue(queue);
    closeEventQueue(-1);
    mq_unlink(kEventQueueName);
}

TEST(Daemon, EndsWithoutAQueue) {
    rlimit limit{};
    getrlimit(RLIMIT_MSGQUEUE, &limit);
    const rlimit none{0, limit.rlim_max};
    setrlimit(RLIMIT_MSGQUEUE, &none);
    ChildProcess daemon(MEDIACHECKD);
    setrlimit(RLIMIT_MSGQUEUE, &limit);
    EXPECT_EQ(daemon.exitStatus(), 255);
    EXPECT_EQ(daemon.output(), "mq_open() failed for '/to_wom': Too many open files\n");
    EXPECT_EQ(sendEvent(-1, EVENT_MATCH), 0);
}

}  // namespace

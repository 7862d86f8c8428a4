// The daemon's event queue and the message on it.
#include "app/event_queue.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

namespace {

TEST(EventQueue, IsMadeAsItsReaderExpectsAndTakesWholeEvents) {
    umask(0);
    const mqd_t queue = openEventQueue();
    struct stat status {};
    mq_attr attributes{};
    EXPECT_FALSE(fstat(queue, &status) || mq_getattr(queue, &attributes));
    EXPECT_EQ(status.st_mode & 0777, 0664u);
    EXPECT_EQ(attributes.mq_maxmsg, 10);
    EXPECT_EQ(attributes.mq_msgsize, 1500);
    EXPECT_EQ(attributes.mq_flags & O_NONBLOCK, 0);

    EXPECT_EQ(sendEvent(queue, 0x01020304), 1);
    unsigned char bytes[1500];
    unsigned priority = 1;
    const auto length = mq_receive(queue, reinterpret_cast<char*>(bytes), sizeof bytes, &priority);
    ASSERT_GT(length, 0);
    EXPECT_EQ(priority, 0u);
    const char code[] = "\x04\x03\x02\x01";  // the layout: docs/event-message.md
    const std::string event = std::string("EV\x28\0\x18\0\0\0\x04\0", 10) + code +
                              std::string("D\x01\x07\0/to_womC\x01\x07\0/to_wom", 22) +
                              std::string("\xEE\x02\0\0", 4);
    EXPECT_EQ(std::string(bytes, bytes + length), event);

    closeEventQueue(queue);
    closeEventQueue(-1);
    EXPECT_EQ(sendEvent(queue, EVENT_MATCH), 0);
}

}  // namespace

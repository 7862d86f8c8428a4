// The daemon's event queue and the message on it.
#include "app/event_queue.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>

#include "platform/host/vxmsg_decode.h"

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
    const auto message = host::decodeVxmsg({bytes, static_cast<size_t>(length)});
    ASSERT_TRUE(message.has_value());
    EXPECT_EQ(message->type, "EV");
    EXPECT_EQ(message->id, 24u);
    std::string elements;
    for (const auto& element : message->elements) {
        elements += std::to_string(element.tag) +
                    std::string(element.value.begin(), element.value.end()) + " ";
    }
    EXPECT_EQ(elements, "68/to_wom 67/to_wom 238 ");
    int32_t code = 0;
    ASSERT_EQ(message->payload.size(), sizeof code);
    std::memcpy(&code, message->payload.data(), sizeof code);
    EXPECT_EQ(code, 0x01020304);

    closeEventQueue(queue);
    closeEventQueue(-1);
    EXPECT_EQ(sendEvent(queue, EVENT_MATCH), 0);
}

}  // namespace

#include "app/event_queue.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

constexpr uint32_t kEventId = 24;  // what the receiver expects for every event code
constexpr uint8_t kTagD = 'D';
constexpr uint8_t kTagC = 'C';
constexpr uint8_t kTagEnd = 0xEE;
constexpr uint32_t kNameLength = sizeof kEventQueueName - 1;

void addQueueName(vxmsg_builder& builder, uint8_t tag) {
    builder.length +=
        sntlv_add_bin(builder.data, builder.capacity, tag, kNameLength, kEventQueueName);
}

}  // namespace

mqd_t createEventQueue() {
    mq_attr attributes{};
    attributes.mq_maxmsg = 10;
    attributes.mq_msgsize = VXMSG_DATA_SIZE;
    return mq_open(kEventQueueName, O_RDWR | O_CREAT, 0664, &attributes);
}

mqd_t openEventQueue() {
    const mqd_t queue = createEventQueue();
    if (queue == -1) {
        printf("mq_open() failed for '%s': %s\n", kEventQueueName, strerror(errno));
    }
    return queue;
}

vxmsg_builder eventMessage(int32_t code) {
    vxmsg_builder builder{};
    builder.capacity = VXMSG_DATA_SIZE;
    vxmsg_build(&builder, "EV", &code, sizeof code, kEventId);
    addQueueName(builder, kTagD);
    addQueueName(builder, kTagC);
    builder.length += sntlv_add_dat(builder.data, builder.capacity, kTagEnd, 0, nullptr);
    return builder;
}

int sendEvent(mqd_t queue, int32_t code) {
    const vxmsg_builder message = eventMessage(code);
    const auto* const bytes = reinterpret_cast<const char*>(message.data);
    return mq_send(queue, bytes, message.length, 0) == 0 ? 1 : 0;
}

void closeEventQueue(mqd_t queue) {
    if (queue != -1) {
        mq_close(queue);
    }
}

// The message queue on which the service that waits for the check finds its result.
#pragma once

#include <mqueue.h>

#include <cstdint>

#include <mediacheckd/platform/vxmsg.h>

constexpr char kEventQueueName[] = "/to_wom";

enum EventCode : int32_t {
    EVENT_NO_MATCH = 23,
    EVENT_MATCH = 24,
    EVENT_ERROR = 25,
};

// Opens the queue for 10 messages of 1500 bytes, creating it with mode 0664, less the umask, where
// there is none; an existing queue keeps its attributes. A send on the full queue blocks.
// Returns the queue, or -1 with errno set.
[[nodiscard]] mqd_t createEventQueue();

// The same for the daemon, which prints the reason on standard output.
[[nodiscard]] mqd_t openEventQueue();

// Builds the event message: of type "EV", carrying the code in the machine's byte order.
[[nodiscard]] vxmsg_builder eventMessage(int32_t code);

// Posts the event message of the code.
// Returns 1 when the queue took it, else 0.
int sendEvent(mqd_t queue, int32_t code);

// Closes the queue; -1 is none.
void closeEventQueue(mqd_t queue);

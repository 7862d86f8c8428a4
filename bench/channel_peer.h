// The far side of the channel for benchmarks, and an exchange with it that does nothing else.
#pragma once

#include <sched.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "platform/host/channel_address.h"

// Keeps this process, with the threads and processes that it starts, on one processor, where nobody
// interrupts who is running: messages between two processors cost what the machine's sleep states
// happen to be, and an interruption one task switch more than an exchange needs.
inline void shareOneProcessor() {
    cpu_set_t processors;
    CPU_ZERO(&processors);
    CPU_SET(0, &processors);
    sched_setaffinity(0, sizeof processors, &processors);
    const sched_param priority = {};
    sched_setscheduler(0, SCHED_BATCH, &priority);
}

// Connects, sends, receives and disconnects. Returns the bytes received, negative on failure.
inline ptrdiff_t bareExchange(const void* request, size_t requestSize, void* reply,
                              size_t replySize) {
    const auto address = host::channelAddress("rtos_media_db");
    const int connection = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
    ptrdiff_t received = -1;
    if (connect(connection, reinterpret_cast<const sockaddr*>(&*address), sizeof *address) == 0 &&
        send(connection, request, requestSize, MSG_NOSIGNAL) >= 0) {
        received = recv(connection, reply, replySize, 0);
    }
    close(connection);
    return received;
}

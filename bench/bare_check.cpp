// The least that a check can be: connects, sends, receives a histogram, posts 40 bytes and idles.
#include <fcntl.h>
#include <mqueue.h>

#include "bench/channel_peer.h"

int main() {
    const mqd_t queue = mq_open("/to_wom", O_RDWR);
    const char request[12] = {10, 0, 0, 0, 1};
    char reply[148];
    const char event[40] = {};
    if (bareExchange(request, sizeof request, reply, sizeof reply) != sizeof reply) {
        return 1;
    }
    mq_send(queue, event, sizeof event, 0);
    pause();
}

// The check daemon: asks the media database once whether there is media to upload, posts the answer
// as one event and idles until it is killed.
#include <limits.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "app/event_queue.h"
#include "vcore/base/standard_output.h"
#include <mediacheckd/medialist/zep_media_list.h>
#include <mediacheckd/vcore/log.h>

namespace {

constexpr int kCheckedBuckets = 1 << 0 | 1 << 3;
constexpr unsigned kIdleSeconds = 5000;

EventCode eventFor(int match) {
    if (match > 0) {
        return EVENT_MATCH;
    }
    if (match < 0) {
        VLOG_ERROR("match returned %d\n", match);
        return EVENT_ERROR;
    }
    return EVENT_NO_MATCH;
}

}  // namespace

int main(int argc, char** argv) {
    // Also on a terminal nothing is written before the event but what showText writes.
    setvbuf(stdout, nullptr, _IOFBF, PIPE_BUF);
    vcore::Logger::init(0, 0, 0xFF, LOG_OUT_STDOUT, "");
    VLOG_INFO("%s\n", argc > 0 ? argv[0] : "");

    const mqd_t queue = openEventQueue();
    if (queue == -1) {
        VLOG_ERROR("Failed to open message queue\n");
        vcore::flushStandardOutput();
        exit(-1);
    }

    ZEPMediaList mediaList;
    const int match = mediaList.matchHistogram(kCheckedBuckets);
    VLOG_INFO("matchHistogram returned %d\n", match);
    sendEvent(queue, eventFor(match));
    closeEventQueue(queue);

    vcore::flushStandardOutput();
    for (;;) {
        sleep(kIdleSeconds);
    }
}

// listen: waits for the event that the check daemon posts.
#include <mqueue.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <ctime>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "app/event_queue.h"
#include "tools/mediactl/command_line.h"
#include "tools/mediactl/interruption.h"
#include "tools/mediactl/output.h"

namespace mediactl {

namespace {

struct ListenOptions {
    std::optional<double> timeout;
    bool follow = false;
};

struct Event {
    int32_t code;
    const char* name;
};

constexpr Event kEvents[] = {
    {EVENT_NO_MATCH, "no match"},
    {EVENT_MATCH, "match"},
    {EVENT_ERROR, "error"},
};

ssize_t receive(mqd_t queue, std::vector<char>& message, std::optional<double> timeout) {
    if (!timeout) {
        return mq_receive(queue, message.data(), message.size(), nullptr);
    }
    using namespace std::chrono;
    const auto end = system_clock::now().time_since_epoch() +
                     duration_cast<nanoseconds>(duration<double>(*timeout));
    const auto wholeSeconds = floor<seconds>(end);
    timespec until = {};
    until.tv_sec = static_cast<time_t>(wholeSeconds.count());
    until.tv_nsec = static_cast<long>((end - wholeSeconds).count());
    return mq_timedreceive(queue, message.data(), message.size(), nullptr, &until);
}

// How a message is laid out is the platform's affair: an event is one that it builds the same.
bool carries(std::span<const char> bytes, const Event& event) {
    const vxmsg_builder message = eventMessage(event.code);
    return bytes.size() == message.length &&
           std::memcmp(bytes.data(), message.data, message.length) == 0;
}

int printEvent(std::span<const char> bytes) {
    for (const Event& event : kEvents) {
        if (!carries(bytes, event)) {
            continue;
        }
        if (printsJson()) {
            printResult({{"event", event.code}, {"name", event.name}});
        } else {
            std::printf("%d %s\n", event.code, event.name);
        }
        return kDone;
    }
    return fail("a message of %zu bytes on %s is no event", bytes.size(), kEventQueueName);
}

int listen(const ListenOptions& options) {
    const mqd_t queue = createEventQueue();
    mq_attr attributes = {};
    if (queue == -1 || mq_getattr(queue, &attributes) != 0) {
        return fail("the queue %s cannot be opened: %m", kEventQueueName);
    }
    std::vector<char> message(static_cast<size_t>(attributes.mq_msgsize));
    int status = kDone;
    ssize_t received = 0;
    do {
        received = receive(queue, message, options.timeout);
        if (received >= 0) {
            status = printEvent({message.data(), static_cast<size_t>(received)});
            std::fflush(stdout);
        }
    } while (options.follow && received >= 0);
    const int reason = errno;
    mq_close(queue);
    if (received >= 0) {
        return status;
    }
    endIfInterrupted();
    if (reason == ETIMEDOUT) {
        return fail("no event within %g s", *options.timeout);
    }
    return fail("no event can be received from %s: %s", kEventQueueName, std::strerror(reason));
}

}  // namespace

void addEventCommands(CommandLine& line) {
    auto options = std::make_shared<ListenOptions>();
    line.add("listen", "Wait for one event of the check daemon",
             [options] { return listen(*options); })
        .option("--timeout", "S", &options->timeout, "Give up after S seconds without an event")
        .flag("--follow", &options->follow, "Go on with the next event");
}

}  // namespace mediactl

// listen: waits for the event that the check daemon posts.
#include <fcntl.h>
#include <mqueue.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <ctime>
#include <memory>
#include <optional>
#include <vector>

#include "platform/host/vxmsg_decode.h"
#include "tools/mediactl/command_line.h"
#include "tools/mediactl/output.h"
#include <mediacheckd/platform/vxmsg.h>

namespace mediactl {

namespace {

constexpr const char* kQueue = "/to_wom";

const char* eventName(int32_t code) {
    switch (code) {
        case 23:
            return "no match";
        case 24:
            return "match";
        case 25:
            return "error";
        default:
            return "unknown";
    }
}

// Opens the queue as the daemon does, so that it may be waited on before the daemon starts.
mqd_t openQueue() {
    mq_attr attributes = {};
    attributes.mq_maxmsg = 10;
    attributes.mq_msgsize = VXMSG_DATA_SIZE;
    return mq_open(kQueue, O_RDWR | O_CREAT, 0664, &attributes);
}

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

int printEvent(bool json, std::span<const char> bytes) {
    const auto message =
        host::decodeVxmsg({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
    int32_t code = 0;
    if (!message || message->type != "EV" || message->payload.size() != sizeof code) {
        return fail("a message of %zu bytes on %s is no event", bytes.size(), kQueue);
    }
    std::memcpy(&code, message->payload.data(), sizeof code);
    if (json) {
        printResult(json, {{"event", code}, {"name", eventName(code)}});
    } else {
        std::printf("%d %s\n", code, eventName(code));
    }
    return kDone;
}

int listen(bool json, std::optional<double> timeout) {
    const mqd_t queue = openQueue();
    mq_attr attributes = {};
    if (queue == -1 || mq_getattr(queue, &attributes) != 0) {
        return fail("the queue %s cannot be opened: %m", kQueue);
    }
    std::vector<char> message(static_cast<size_t>(attributes.mq_msgsize));
    const ssize_t received = receive(queue, message, timeout);
    const int reason = errno;
    mq_close(queue);
    if (received >= 0) {
        return printEvent(json, {message.data(), static_cast<size_t>(received)});
    }
    if (reason == ETIMEDOUT) {
        return fail("no event within %g s", *timeout);
    }
    return fail("no event can be received from %s: %s", kQueue, std::strerror(reason));
}

}  // namespace

void addEventCommands(CommandLine& line) {
    auto timeout = std::make_shared<std::optional<double>>();
    line.add("listen", "Wait for one event of the check daemon",
             [&line, timeout] { return listen(line.json(), *timeout); })
        .option("--timeout", "S", timeout.get(), "Give up after S seconds");
}

}  // namespace mediactl

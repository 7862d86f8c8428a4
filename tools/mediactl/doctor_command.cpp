// doctor: what stands between the tool and the camera, one line a link of the chain, each with what
// to do where it is broken.
#include <fcntl.h>
#include <mqueue.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <string>

#include "app/event_queue.h"
#include "libvxMediaRTOSDB/src/exchange/rtos_connection_guard.h"
#include "libvxMediaRTOSDB/src/records/request_header.h"
#include "tools/mediactl/command_line.h"
#include "tools/mediactl/exchange_watch.h"
#include "tools/mediactl/model_number.h"
#include "tools/mediactl/output.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/zep_queries.h>

namespace mediactl {

namespace {

// What was found, and whether it is as it should be.
struct Finding {
    bool sound;
    std::string text;
};

Finding wrong(const Failure& failure) {
    return {false, failure.sentence()};
}

Finding examineChannel() {
    const RtosConnectionGuard connection;
    return exchangeTrouble() ? wrong(*exchangeTrouble()) : Finding{true, "it opens"};
}

// One exchange, without the library's further tries.
Finding examineExchange() {
    using namespace std::chrono;
    RtosConnectionGuard connection;
    if (connection.result() < 0) {
        return {false, "there is no channel to ask on"};
    }
    db_histogram_request request;
    fillHeader(&request.header, DB_CMD_MEDIA_HISTOGRAM, 1, &request);
    std::array<uint8_t, kResponseBufferSize> response;
    const auto start = steady_clock::now();
    if (rtosConnectionSend(connection.get(), &request, sizeof request) >= 0) {
        (void)rtosConnectionRecv(connection.get(), response.data(), kResponseBufferSize);
    }
    const auto time = duration_cast<microseconds>(steady_clock::now() - start).count();
    return exchangeTrouble() ? wrong(*exchangeTrouble())
                             : Finding{true, "answered in " + std::to_string(time) + " us"};
}

Finding examineSettings() {
    const auto model = modelNumber();
    return model ? Finding{true, "model " + std::to_string(*model)} : wrong(noModelNumber());
}

Finding examineQueue() {
    const mqd_t queue = mq_open(kEventQueueName, O_RDONLY);
    if (queue == -1 && errno == ENOENT) {
        return {true, "not there yet; mediacheckd or mediactl listen makes it"};
    }
    if (queue == -1) {
        return {false, std::string(std::strerror(errno)) +
                           ": its readers belong to the daemon's user or group"};
    }
    mq_attr attributes = {};
    mq_getattr(queue, &attributes);
    mq_close(queue);
    const std::string fill = std::to_string(attributes.mq_curmsgs) + " of " +
                             std::to_string(attributes.mq_maxmsg) + " events wait";
    const bool full = attributes.mq_curmsgs == attributes.mq_maxmsg;
    return {!full, full ? fill + ": mediactl listen takes one" : fill};
}

Finding examineCard() {
    constexpr const char* kCard = "/tmp/fuse_d";
    constexpr const char* kIdentity = "/tmp/fuse_d/MISC/card";
    struct stat status = {};
    if (stat(kCard, &status) != 0) {
        return {false, std::string(kCard) +
                           " is not there: no card is mounted, and the HTTP answers "
                           "have status 404"};
    }
    if (access(kIdentity, R_OK) == 0) {
        return {true, kIdentity};
    }
    return access(kCard, W_OK) == 0
               ? Finding{true, "none yet; the first HTTP answer makes one"}
               : Finding{false, std::string(kCard) + " cannot be written: no identity can be made"};
}

Finding examineList(decltype(&dbGetZEPItems) query) {
    uint32_t session = 0;
    uint32_t total = 0;
    const int result = query(1, 0, nullptr, nullptr, nullptr, nullptr, nullptr, &session, &total);
    if (result < 0 || exchangeTrouble()) {
        return exchangeTrouble() ? wrong(*exchangeTrouble()) : Finding{false, "no list came"};
    }
    return {true, std::to_string(total) + " items, session " + std::to_string(session)};
}

struct Check {
    const char* name;
    Finding (*examine)();
};

constexpr Check kChecks[] = {
    {"channel", examineChannel},
    {"exchange", examineExchange},
    {"settings", examineSettings},
    {"event queue", examineQueue},
    {"card identity", examineCard},
    {"items", [] { return examineList(dbGetZEPItems); }},
    {"session files", [] { return examineList(dbGetZEPSessionFileList); }},
};

int doctor() {
    Listing listing("checks",
                    {{"state", "state", -5}, {"check", "check", -13}, {"found", "found", -1}});
    int broken = 0;
    for (const Check& check : kChecks) {
        forgetExchanges();
        const Finding finding = check.examine();
        broken += finding.sound ? 0 : 1;
        listing.add({{"state", finding.sound ? "ok" : "wrong"},
                     {"check", check.name},
                     {"found", finding.text}});
    }
    listing.end({{"wrong", broken}});
    return broken == 0 ? kDone : kFailed;
}

}  // namespace

void addDoctorCommand(CommandLine& line) {
    line.add("doctor", "Tell what stands between this tool and the camera", doctor);
}

}  // namespace mediactl

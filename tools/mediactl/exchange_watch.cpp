// The linker leads each call of the platform's channel through here (--wrap), whoever provides it.
#include "tools/mediactl/exchange_watch.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <map>
#include <span>
#include <string_view>

#include "libvxMediaRTOSDB/src/records/record_reader.h"
#include "tools/mediactl/exchange_recording.h"
#include "tools/mediactl/interruption.h"
#include "tools/mediactl/progress.h"
#include <mediacheckd/platform/vxipc.h>
#include <mediacheckd/vxMediaRTOSDB/db_requests.h>
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>

extern "C" {
int realInit(const char* channel, vxIpcEndpoint* endpoint) __asm__("__real_vxIpcInit");
int realSend(vxIpcEndpoint* endpoint, const void* message, int length) __asm__("__real_vxIpcSend");
int realReceive(vxIpcEndpoint* endpoint, void* buffer, int size) __asm__("__real_vxIpcReceive");
int watchedInit(const char* channel, vxIpcEndpoint* endpoint) __asm__("__wrap_vxIpcInit");
int watchedSend(vxIpcEndpoint* endpoint, const void* message,
                int length) __asm__("__wrap_vxIpcSend");
int watchedReceive(vxIpcEndpoint* endpoint, void* buffer, int size) __asm__("__wrap_vxIpcReceive");
}

namespace mediactl {

namespace {

constexpr std::string_view kChannel = "rtos_media_db";
constexpr const char* kStart = "start the camera's database, on a PC mediadb-sim CARD";
constexpr const char* kLookAtLog = "see whether the database runs, and its log";

// What is seen of one exchange after the other: they never overlap.
struct Watch {
    std::optional<Failure> broken;  // no answer came
    std::optional<Failure> wrong;   // the first answer that was no good
    db_request_header request{};
    bool awaitsAnswer = false;
    bool holds = false;               // the latest request, which is not sent
    size_t entriesAwaited = 0;        // of a scan
    std::optional<uint32_t> session;  // of the latest page of a list
    bool changed = false;             // the card, between two pages
};

Watch watch;

std::optional<uint32_t> heldWrites;  // how many status writes were held back
bool dumpsBytes = false;

// Only the host's results are known to be those of errno.
int errorOf(int result) {
    return MEDIACTL_RESULTS_ARE_ERRNO ? -result : 0;
}

bool isClosed(int result) {
    return errorOf(result) == EPIPE || errorOf(result) == ECONNRESET;
}

// The channel of each endpoint: a platform may ask its settings service on one of its own.
std::map<const vxIpcEndpoint*, std::string> channels;

bool isOther(const vxIpcEndpoint* endpoint) {
    return channels[endpoint] != kChannel;
}

int sendRecorded(vxIpcEndpoint* endpoint, const void* message, int length) {
    const int result = realSend(endpoint, message, length);
    if (result >= 0) {
        recordRequest(channels[endpoint], std::span(static_cast<const std::byte*>(message),
                                                    static_cast<size_t>(length)));
    }
    return result;
}

int receiveRecorded(vxIpcEndpoint* endpoint, void* buffer, int size) {
    const int result = realReceive(endpoint, buffer, size);
    if (result >= 0) {
        recordMessage(
            std::span(static_cast<const std::byte*>(buffer), static_cast<size_t>(result)));
    } else if (isClosed(result)) {
        recordClose();
    }
    return result;
}

enum class Step { kOpen, kSend, kReceive };

Failure brokenAt(Step step, int result) {
    switch (errorOf(result)) {
        case ENOENT:
            return {"no_channel", "there is no channel \"rtos_media_db\"", kStart};
        case ECONNREFUSED:
            return {"nobody_there", "nobody is behind the channel \"rtos_media_db\"", kStart};
        case EACCES:
            return {"not_allowed", "the channel \"rtos_media_db\" is another user's",
                    "be the user who runs the database, or let root run it"};
        default:
            break;
    }
    if (isClosed(result)) {
        return {"closed", "the database closes the connection without an answer", kLookAtLog};
    }
    const Json details = {{"result", result}};
    if (step == Step::kReceive) {
        return {"silent", "the database is silent", kLookAtLog, details};
    }
    return {"unreachable",
            std::string("the channel \"rtos_media_db\" cannot be ") +
                (step == Step::kOpen ? "opened (" : "written (") + std::to_string(result) + ")",
            kStart, details};
}

// The bytes that a good answer has at least.
size_t leastAnswer(uint32_t command) {
    switch (command) {
        case DB_CMD_LIST:
        case DB_CMD_LIST_WITH_PARAMETERS:
            return sizeof(db_list_response_header);
        case DB_CMD_CONTENT_INFO:
        case DB_CMD_GROUP_CONTENT_INFO:
        case DB_CMD_VIDEO_SPECIFIC_INFO:
            return sizeof(db_item_response);
        case DB_CMD_CONTENT_INFO_BY_GUMI:
            return sizeof(db_file_name_response);
        case DB_CMD_FILE_GUMI:
            return offsetof(db_file_gumi_response, parent_gumi);
        case DB_CMD_MORE_INFO:
            return sizeof(db_more_info_response);
        case DB_CMD_MEDIA_HISTOGRAM:
            return sizeof(db_histogram_response);
        default:
            return sizeof(db_response_header);
    }
}

bool namesFile(uint32_t command) {
    return command != DB_CMD_LIST && command != DB_CMD_LIST_WITH_PARAMETERS &&
           command != DB_CMD_MEDIA_HISTOGRAM;
}

Failure refusedWith(uint32_t status, bool named) {
    constexpr uint32_t kNoneOfThem = 3;
    constexpr uint32_t kNotFound = 4;
    const std::string number = " (status " + std::to_string(status) + ")";
    const Json details = {{"status", status}};
    if (named && (status == kNoneOfThem || status == kNotFound)) {
        return {"not_found", "the database does not know it" + number,
                "mediactl items lists what it has", details};
    }
    return {"refused", "the database refuses" + number,
            "see whether a card is in the camera, and the database's log", details};
}

Failure tooShort(size_t size, size_t least) {
    return {"too_short",
            "the answer has " + std::to_string(size) + " bytes of " + std::to_string(least),
            "see whether the versions of database and mediactl fit",
            {{"bytes", size}, {"least", least}}};
}

// What is no good about an answer, if anything.
std::optional<Failure> wrongIn(std::span<const uint8_t> answer) {
    const auto header = wordsReceived<db_response_header>(answer);
    const uint32_t command = watch.request.command_type;
    const size_t least = leastAnswer(command);
    if (answer.size() >= sizeof header && header.status != 0) {
        return refusedWith(header.status, namesFile(command));
    }
    if (answer.size() < least) {
        return tooShort(answer.size(), least);
    }
    if (header.token != watch.request.token) {
        return Failure{"other_token", "the answer carries the token of another request",
                       "try again; if it stays so, start the database anew"};
    }
    return std::nullopt;
}

// As the database answers a write.
int answerHeldWrite(void* buffer) {
    db_response_header answer = {};
    answer.command_type = watch.request.command_type;
    answer.count_returned = 1;
    answer.token = watch.request.token;
    std::memcpy(buffer, &answer, sizeof answer);
    heldWrites = *heldWrites + 1;
    return sizeof answer;
}

void dump(const char* direction, std::span<const uint8_t> message) {
    constexpr size_t kLine = 32;
    if (!dumpsBytes) {
        return;
    }
    std::fprintf(stderr, "%s:", direction);
    for (size_t i = 0; i < message.size(); ++i) {
        if (i % kLine == 0) {
            std::fprintf(stderr, "\n[%05zu/%05zu]:", i, message.size());
        }
        std::fprintf(stderr, i % 4 == 0 ? "  %02x" : " %02x", message[i]);
    }
    std::fputs("\n", stderr);
}

// A page of a list tells how many items there are, and in which session.
void readPage(std::span<const uint8_t> answer) {
    const auto page = wordsReceived<db_list_response_header>(answer);
    watch.changed = watch.changed || (watch.session && watch.session != page.session_id);
    watch.session = page.session_id;
    if (watch.request.request_count > 1) {
        noteItems(page.start_index + page.header.count_returned, page.total_entries);
    }
}

// The entries of a scan that came; its answer goes on in messages without a header.
void countEntries(size_t size) {
    const size_t entries = size / sizeof(scandir_result_item);
    watch.entriesAwaited -= std::min(watch.entriesAwaited, entries);
}

void readScan(std::span<const uint8_t> answer) {
    const auto header = wordsReceived<db_scandir_response_header>(answer);
    watch.entriesAwaited = header.number_file_names;
    countEntries(answer.size() - std::min(answer.size(), sizeof header));
}

}  // namespace

void dumpExchanges() {
    dumpsBytes = true;
}

void holdStatusWrites() {
    heldWrites = 0;
}

uint32_t heldStatusWrites() {
    return heldWrites.value_or(0);
}

void forgetExchanges() {
    watch = {};
}

std::optional<Failure> exchangeTrouble() {
    if (watch.entriesAwaited != 0 && !watch.broken) {
        return Failure{"too_short",
                       "the answer lacks " + std::to_string(watch.entriesAwaited) + " files",
                       "try again, and see the database's log"};
    }
    return watch.wrong ? watch.wrong : watch.broken;
}

int failExchange(const std::string& unseen) {
    if (const std::optional<Failure> seen = exchangeTrouble()) {
        return fail(*seen);
    }
    if (watch.changed) {
        return failChanged();
    }
    return fail(Failure{"unusable", unseen, "--log-level 6 shows the answer's bytes"});
}

int failChanged() {
    return fail(Failure{"changed", "the card has changed meanwhile", "try again"});
}

}  // namespace mediactl

using namespace mediactl;

int watchedInit(const char* channel, vxIpcEndpoint* endpoint) {
    const int result = realInit(channel, endpoint);
    channels[endpoint] = channel;
    if (result < 0 && !isOther(endpoint)) {
        watch.broken = brokenAt(Step::kOpen, result);
    }
    return result;
}

int watchedSend(vxIpcEndpoint* endpoint, const void* message, int length) {
    if (isOther(endpoint)) {
        return sendRecorded(endpoint, message, length);
    }
    endIfInterrupted();
    noteExchange();
    const std::span request(static_cast<const uint8_t*>(message), static_cast<size_t>(length));
    dump("Snd", request);
    watch.request = wordsReceived<db_request_header>(request);
    watch.awaitsAnswer = true;
    watch.holds = heldWrites && watch.request.command_type == DB_CMD_WRITE_UPLOAD_STATUS;
    const int result = watch.holds ? 0 : sendRecorded(endpoint, message, length);
    if (result < 0) {
        watch.broken = brokenAt(Step::kSend, result);
    }
    return result;
}

int watchedReceive(vxIpcEndpoint* endpoint, void* buffer, int size) {
    if (isOther(endpoint)) {
        return receiveRecorded(endpoint, buffer, size);
    }
    const int received =
        watch.holds ? answerHeldWrite(buffer) : receiveRecorded(endpoint, buffer, size);
    if (received < 0) {
        watch.broken = brokenAt(Step::kReceive, received);
        endIfInterrupted();
        return received;
    }
    watch.broken.reset();
    const std::span message(static_cast<const uint8_t*>(buffer), static_cast<size_t>(received));
    dump("Rcv", message);
    if (!watch.awaitsAnswer) {
        countEntries(message.size());
        return received;
    }
    watch.awaitsAnswer = false;
    watch.wrong = watch.wrong ? watch.wrong : wrongIn(message);
    if (watch.request.command_type == DB_CMD_NON_DB_SCANDIR && !watch.wrong) {
        readScan(message);
    }
    if (watch.request.command_type == DB_CMD_LIST && !watch.wrong) {
        readPage(message);
    }
    return received;
}

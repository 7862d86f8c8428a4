#include "tools/mediactl/exchange_recording.h"

#include <optional>
#include <stdexcept>

#include "simulator/record/recorder.h"
#include "tools/mediactl/failure.h"

namespace mediactl {

namespace {

std::optional<simulator::Recorder> recorder;
std::optional<simulator::RecordedExchange> latest;
std::string trouble;

std::vector<std::byte> copyOf(std::span<const std::byte> message) {
    return {message.begin(), message.end()};
}

// The library above the channel takes no exceptions.
void writeLatest() {
    try {
        if (latest && trouble.empty()) {
            recorder->write(*latest);
        }
    } catch (const std::runtime_error& error) {
        trouble = error.what();
    }
    latest.reset();
}

}  // namespace

int recordExchanges(const std::string& path) {
    try {
        recorder.emplace(path);
    } catch (const std::runtime_error& error) {
        return fail("%s", error.what());
    }
    return kDone;
}

void recordRequest(const std::string& channel, std::span<const std::byte> request) {
    if (recorder) {
        writeLatest();
        latest = {recorder->time(), channel, copyOf(request)};
    }
}

void recordMessage(std::span<const std::byte> message) {
    if (latest) {
        if (latest->messages.empty()) {
            latest->delay = std::chrono::duration_cast<std::chrono::milliseconds>(recorder->time() -
                                                                                  latest->time);
        }
        latest->messages.push_back(copyOf(message));
    }
}

void recordClose() {
    if (latest) {
        latest->closed = true;
    }
}

int finishRecording() {
    writeLatest();
    return trouble.empty() ? kDone : fail("%s", trouble.c_str());
}

}  // namespace mediactl

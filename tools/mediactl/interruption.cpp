#include "tools/mediactl/interruption.h"

#include <csignal>
#include <cstdio>

#include "tools/mediactl/exchange_recording.h"
#include "tools/mediactl/failure.h"

namespace mediactl {

namespace {

volatile std::sig_atomic_t noted = 0;

}  // namespace

void noteInterruptions() {
    struct sigaction action = {};
    action.sa_handler = [](int signal) { noted = signal; };
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

void endIfInterrupted() {
    const int signal = noted;
    if (signal == 0) {
        return;
    }
    // One more ends a process whose reader takes nothing.
    std::signal(signal, SIG_DFL);
    (void)fail(Failure{"interrupted", "interrupted", ""});
    (void)finishRecording();
    std::fflush(stdout);
    std::raise(signal);
}

}  // namespace mediactl

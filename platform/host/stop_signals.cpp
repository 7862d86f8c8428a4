#include "platform/host/stop_signals.h"

#include <sys/signalfd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

namespace host {

UniqueFd openSignals(std::initializer_list<int> signals) {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : signals) {
        sigaddset(&set, signal);
    }
    const int blocked = pthread_sigmask(SIG_BLOCK, &set, nullptr);
    UniqueFd descriptor(signalfd(-1, &set, SFD_NONBLOCK | SFD_CLOEXEC));
    if (blocked != 0 || descriptor.get() < 0) {
        throw std::system_error(blocked != 0 ? blocked : errno, std::generic_category(),
                                "signalfd");
    }
    return descriptor;
}

UniqueFd openStopSignals() {
    return openSignals({SIGINT, SIGTERM});
}

bool takeSignal(const UniqueFd& signals) {
    signalfd_siginfo taken;
    return read(signals.get(), &taken, sizeof taken) == sizeof taken;
}

}  // namespace host

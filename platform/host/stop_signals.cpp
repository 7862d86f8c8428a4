#include "platform/host/stop_signals.h"

#include <sys/signalfd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

namespace host {

UniqueFd openStopSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    const int blocked = pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    UniqueFd descriptor(signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
    if (blocked != 0 || descriptor.get() < 0) {
        throw std::system_error(blocked != 0 ? blocked : errno, std::generic_category(),
                                "signalfd");
    }
    return descriptor;
}

}  // namespace host

// Keeps away the signals with which a write tells that it fails.
#pragma once

#include <csignal>
#include <ctime>
#include <initializer_list>

namespace vcore {

// While it lives, a write of this thread to a pipe without a reader or beyond the limit of a file's
// size only fails, and one to a terminal from the background is not stopped. Mask, disposition and
// pending signals of the process are as before when it has gone.
class WriteGuard {
  public:
    WriteGuard() {
        sigset_t pending;
        sigpending(&pending);
        sigset_t blocked;
        sigemptyset(&blocked);
        sigemptyset(&mOwn);
        for (const int signal : {SIGPIPE, SIGXFSZ, SIGTTOU}) {
            sigaddset(&blocked, signal);
            if (sigismember(&pending, signal) == 0) {
                sigaddset(&mOwn, signal);
            }
        }
        pthread_sigmask(SIG_BLOCK, &blocked, &mOldMask);
    }
    ~WriteGuard() {
        constexpr timespec kNoWait{};
        while (sigtimedwait(&mOwn, nullptr, &kNoWait) > 0) {
        }
        pthread_sigmask(SIG_SETMASK, &mOldMask, nullptr);
    }
    WriteGuard(const WriteGuard&) = delete;
    WriteGuard& operator=(const WriteGuard&) = delete;

  private:
    sigset_t mOwn;  // signals that were not pending before
    sigset_t mOldMask;
};

}  // namespace vcore

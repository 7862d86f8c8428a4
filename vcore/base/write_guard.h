// Keeps SIGPIPE away from whoever writes to a pipe or socket whose reader may be gone.
#pragma once

#include <csignal>
#include <ctime>

namespace vcore {

// While it lives, a write of this thread to a broken pipe only fails. Mask, disposition and pending
// signals of the process are as before when it has gone.
class BrokenPipeGuard {
  public:
    BrokenPipeGuard() {
        sigset_t pending;
        sigpending(&pending);
        mWasPending = sigismember(&pending, SIGPIPE) == 1;
        sigemptyset(&mBrokenPipe);
        sigaddset(&mBrokenPipe, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &mBrokenPipe, &mOldMask);
    }
    ~BrokenPipeGuard() {
        constexpr timespec kNoWait{};
        if (!mWasPending) {
            sigtimedwait(&mBrokenPipe, nullptr, &kNoWait);
        }
        pthread_sigmask(SIG_SETMASK, &mOldMask, nullptr);
    }
    BrokenPipeGuard(const BrokenPipeGuard&) = delete;
    BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;

  private:
    sigset_t mBrokenPipe;
    sigset_t mOldMask;
    bool mWasPending;
};

}  // namespace vcore

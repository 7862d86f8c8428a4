// A program that a test runs beside itself.
#pragma once

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

class ChildProcess {
  public:
    // command: for bash, which is replaced by its program. Standard error joins standard output.
    explicit ChildProcess(const std::string& command) {
        int ends[2];
        mPid = pipe2(ends, O_CLOEXEC) == 0 ? fork() : -1;
        if (mPid == 0) {
            dup2(ends[1], STDOUT_FILENO);
            dup2(ends[1], STDERR_FILENO);
            execl("/bin/bash", "bash", "-c", ("exec " + command).c_str(), nullptr);
            _exit(127);
        }
        close(ends[1]);
        mOutput = ends[0];
    }
    ~ChildProcess() {
        if (running()) {
            kill(mPid, SIGKILL);
            waitpid(mPid, nullptr, 0);
        }
        close(mOutput);
    }

    bool running() {
        if (!mEnded && waitpid(mPid, &mStatus, WNOHANG) != 0) {
            mEnded = true;
        }
        return !mEnded;
    }

    // The output so far, after waiting up to half a minute for it to hold the text; for an empty
    // text it is what has come already.
    const std::string& output(const std::string& text = "") {
        char bytes[4096];
        pollfd readable{mOutput, POLLIN, 0};
        while (text.empty() || mText.find(text) == std::string::npos) {
            const bool ready = poll(&readable, 1, text.empty() ? 0 : 30'000) > 0;
            const ssize_t length = ready ? read(mOutput, bytes, sizeof bytes) : 0;
            if (length <= 0) {
                break;
            }
            mText.append(bytes, static_cast<size_t>(length));
        }
        return mText;
    }

    // Waits for the end. Returns the exit status, or -1 for another end.
    int exitStatus() {
        output("\377");  // no program prints it: reads up to the end
        if (!mEnded) {
            waitpid(mPid, &mStatus, 0);
            mEnded = true;
        }
        return WIFEXITED(mStatus) ? WEXITSTATUS(mStatus) : -1;
    }

    void stop(int signal) const { kill(mPid, signal); }

  private:
    pid_t mPid;
    int mOutput;
    int mStatus = 0;
    bool mEnded = false;
    std::string mText;
};

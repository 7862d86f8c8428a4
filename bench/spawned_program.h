// A running program whose standard output goes nowhere.
#pragma once

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <utility>

class SpawnedProgram {
  public:
    explicit SpawnedProgram(const char* path) {
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        char* arguments[] = {const_cast<char*>(path), nullptr};
        posix_spawn(&mProcess, path, &actions, nullptr, arguments, environ);
        posix_spawn_file_actions_destroy(&actions);
    }
    ~SpawnedProgram() {
        if (mProcess > 0) {
            kill(mProcess, SIGKILL);
            waitpid(mProcess, nullptr, 0);
        }
    }
    SpawnedProgram(const SpawnedProgram&) = delete;
    SpawnedProgram& operator=(const SpawnedProgram&) = delete;

    // Waits until it has ended. Returns whether its exit status was 0.
    bool ended() {
        int status = -1;
        waitpid(std::exchange(mProcess, 0), &status, 0);
        return status == 0;
    }

  private:
    pid_t mProcess = 0;
};

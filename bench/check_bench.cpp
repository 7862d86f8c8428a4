// The daemon, from its start to its event, against a program that only exchanges the messages.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <mqueue.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <chrono>

#include "app/event_queue.h"
#include "bench/channel_peer.h"
#include "bench/ratio.h"
#include "tests/support/channel_thread.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>

namespace {

// A running program whose standard output goes nowhere.
class Program {
  public:
    explicit Program(const char* path) {
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        char* arguments[] = {const_cast<char*>(path), nullptr};
        posix_spawn(&mProcess, path, &actions, nullptr, arguments, environ);
        posix_spawn_file_actions_destroy(&actions);
    }
    ~Program() {
        kill(mProcess, SIGKILL);
        waitpid(mProcess, nullptr, 0);
    }

  private:
    pid_t mProcess = 0;
};

void startToEvent(benchmark::State& state, const char* path) {
    const mqd_t queue = openEventQueue();
    char event[1500];
    for (auto _ : state) {
        using Clock = std::chrono::steady_clock;
        const auto start = Clock::now();
        const Program program(path);
        const timespec late = {.tv_sec = time(nullptr) + 5, .tv_nsec = 0};
        if (mq_timedreceive(queue, event, sizeof event, nullptr, &late) < 0) {
            state.SkipWithError("no event came");
        }
        // Ending the program does not count.
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
    }
    closeEventQueue(queue);
}

}  // namespace

int main(int argc, char** argv) {
    shareOneProcessor();
    const ChannelThread database("rtos_media_db", [](auto) {
        return host::Reply{.messages = {host::Message(sizeof(db_histogram_response))}};
    });
    benchmark::RegisterBenchmark("mediacheckd", startToEvent, DAEMON)->UseManualTime();
    benchmark::RegisterBenchmark("bareCheck", startToEvent, BARE_CHECK)->UseManualTime();
    return runBenchmarks(argc, argv, {{"mediacheckd/manual_time", "bareCheck/manual_time", 1.2}});
}

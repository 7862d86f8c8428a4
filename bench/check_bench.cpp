// The daemon, from its start to its event, against a program that only exchanges the messages.
#include <benchmark/benchmark.h>
#include <mqueue.h>

#include <chrono>

#include "app/event_queue.h"
#include "bench/channel_peer.h"
#include "bench/ratio.h"
#include "bench/spawned_program.h"
#include "tests/support/channel_thread.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>

namespace {

void startToEvent(benchmark::State& state, const char* path) {
    const mqd_t queue = openEventQueue();
    char event[1500];
    for (auto _ : state) {
        using Clock = std::chrono::steady_clock;
        const auto start = Clock::now();
        const SpawnedProgram program(path);
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
    return runBenchmarks(argc, argv, {{"mediacheckd/manual_time", "bareCheck/manual_time", 1.05}});
}

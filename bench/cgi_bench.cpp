// One HTTP answer as a whole process, against the least program that makes the same exchange.
#include <benchmark/benchmark.h>

#include "bench/channel_peer.h"
#include "bench/plain_page.h"
#include "bench/ratio.h"
#include "bench/spawned_program.h"
#include "tests/support/channel_thread.h"

namespace {

// A card of ten photos: one page answers the list.
host::Message tenPhotos() {
    constexpr uint32_t kPhotos = 10;
    std::vector<uint8_t> page = plainPage();
    auto& header = *reinterpret_cast<db_list_response_header*>(page.data());
    header.header.count_returned = kPhotos;
    header.total_entries = kPhotos;
    page.resize(sizeof header + kPhotos * sizeof(db_item_record));
    const auto* const bytes = reinterpret_cast<const std::byte*>(page.data());
    return {bytes, bytes + page.size()};
}

void answer(benchmark::State& state, const char* path) {
    for (auto _ : state) {
        if (!SpawnedProgram(path).ended()) {
            state.SkipWithError("the program failed");
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    shareOneProcessor();
    const host::Message page = tenPhotos();
    const ChannelThread database("rtos_media_db",
                                 [&](auto) { return host::Reply{.messages = {page}}; });
    benchmark::RegisterBenchmark("nph-medialist", answer, NPH_MEDIALIST)->UseRealTime();
    benchmark::RegisterBenchmark("bareAnswer", answer, BARE_ANSWER)->UseRealTime();
    return runBenchmarks(argc, argv, {{"nph-medialist/real_time", "bareAnswer/real_time", 1.05}});
}

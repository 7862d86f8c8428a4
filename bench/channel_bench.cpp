// A page fetch over the host's channel against a bare exchange of messages of the same sizes.
#include <benchmark/benchmark.h>

#include <algorithm>

#include "bench/channel_peer.h"
#include "bench/plain_page.h"
#include "bench/ratio.h"
#include "tests/support/channel_thread.h"
#include <mediacheckd/vxMediaRTOSDB/zep_queries.h>

namespace {

void pageFetch(benchmark::State& state) {
    uint32_t sessionId = 0;
    for (auto _ : state) {
        if (dbGetZEPItems(kPlainItems, 0, nullptr, nullptr, nullptr, nullptr, nullptr, &sessionId,
                          nullptr) != kPlainItems) {
            state.SkipWithError("the page did not come");
        }
    }
}

void bareExchangeOfPage(benchmark::State& state) {
    const db_list_request request = {};
    uint8_t reply[kResponseBufferSize];
    for (auto _ : state) {
        if (bareExchange(&request, sizeof request, reply, sizeof reply) <= 0) {
            state.SkipWithError("the page did not come");
        }
    }
}

BENCHMARK(pageFetch)->UseRealTime();
BENCHMARK(bareExchangeOfPage)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
    shareOneProcessor();
    host::Message page;
    std::ranges::transform(plainPage(), std::back_inserter(page),
                           [](uint8_t byte) { return std::byte{byte}; });
    const ChannelThread database("rtos_media_db",
                                 [page](auto) { return host::Reply{.messages = {page}}; });
    return runBenchmarks(argc, argv,
                         {{"pageFetch/real_time", "bareExchangeOfPage/real_time", 1.05}});
}

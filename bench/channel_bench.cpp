// A page fetch over the host's channel against a bare exchange of messages of the same sizes.
#include <benchmark/benchmark.h>

#include <vector>

#include "bench/channel_peer.h"
#include "bench/ratio.h"
#include "libvxMediaRTOSDB/src/db_responses.h"
#include "libvxMediaRTOSDB/src/zep_queries.h"
#include "tests/support/channel_thread.h"

namespace {

constexpr uint32_t kItems = 15;

host::Message plainPage() {
    db_list_response_header header = {};
    header.header.count_returned = kItems;
    header.list_options = LIST_OPTION_VIDEO_GROUPING;
    header.total_entries = kItems;
    db_item_record item = {};
    item.content_type = DB_CONTENT_TYPE_SINGLE_PHOTO;
    host::Message page(sizeof header + kItems * sizeof item);
    std::memcpy(page.data(), &header, sizeof header);
    for (size_t i = 0; i < kItems; i++)
        std::memcpy(page.data() + sizeof header + i * sizeof item, &item, sizeof item);
    return page;
}

void pageFetch(benchmark::State& state) {
    uint32_t sessionId = 0;
    for (auto _ : state) {
        if (dbGetZEPItems(kItems, 0, nullptr, nullptr, nullptr, nullptr, nullptr, &sessionId,
                          nullptr) != kItems)
            state.SkipWithError("the page did not come");
    }
}

void bareExchangeOfPage(benchmark::State& state) {
    const db_list_request request = {};
    uint8_t reply[kResponseBufferSize];
    for (auto _ : state) {
        if (bareExchange(&request, sizeof request, reply, sizeof reply) <= 0)
            state.SkipWithError("the page did not come");
    }
}

BENCHMARK(pageFetch)->UseRealTime();
BENCHMARK(bareExchangeOfPage)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
    pinToOneProcessor();
    const ChannelThread database(
        "rtos_media_db", [page = plainPage()](auto) { return host::Reply{.messages = {page}}; });
    return runBenchmarks(argc, argv,
                         {{"pageFetch/real_time", "bareExchangeOfPage/real_time", 1.15}});
}

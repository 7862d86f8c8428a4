// The walk over a full page against copying the page's bytes.
#include <benchmark/benchmark.h>

#include <cstring>

#include "bench/plain_page.h"
#include "bench/ratio.h"
#include <mediacheckd/vxMediaRTOSDB/page_walker.h>

namespace {

void takeItem(void*, zep_item_s* item) {
    benchmark::DoNotOptimize(item);
}

void takeFile(void*, char*, char* fileName) {
    benchmark::DoNotOptimize(fileName);
}

void walkPage(benchmark::State& state) {
    const auto page = plainPage();
    for (auto _ : state) {
        const int result = processQueryResponse(page.data(), static_cast<int>(page.size()), 0,
                                                takeItem, nullptr, takeFile, nullptr);
        if (result != 0) {
            state.SkipWithError("the page was not walked to its end");
        }
    }
    state.SetItemsProcessed(state.iterations() * kPlainItems);
}

void copyPage(benchmark::State& state) {
    const auto page = plainPage();
    uint8_t copy[kResponseBufferSize];
    for (auto _ : state) {
        std::memcpy(copy, page.data(), page.size());
        benchmark::DoNotOptimize(copy);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kPlainItems);
}

BENCHMARK(walkPage);
BENCHMARK(copyPage);

}  // namespace

int main(int argc, char** argv) {
    return runBenchmarks(argc, argv, {{"walkPage", "copyPage", 8}});
}

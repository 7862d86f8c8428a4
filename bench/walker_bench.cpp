// The walk over a full page against copying the page's bytes.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "bench/ratio.h"
#include "libvxMediaRTOSDB/src/db_responses.h"
#include "libvxMediaRTOSDB/src/page_walker.h"

namespace {

constexpr uint32_t kItems = 15;

// A page of single photos, which carry nothing but their records.
std::vector<uint8_t> plainPage() {
    db_list_response_header header = {};
    header.header.count_returned = kItems;
    header.list_options = LIST_OPTION_VIDEO_GROUPING;
    header.total_entries = kItems;
    db_item_record item = {};
    item.content_type = DB_CONTENT_TYPE_SINGLE_PHOTO;
    std::memcpy(item.dir_name, "100MEDIA", kDirNameSize);
    std::memcpy(item.file_name, "VXAA0001.JPG", kFileNameSize);
    item.created = 1000;

    std::vector<uint8_t> page(sizeof header + kItems * sizeof item);
    std::memcpy(page.data(), &header, sizeof header);
    for (size_t i = 0; i < kItems; i++)
        std::memcpy(page.data() + sizeof header + i * sizeof item, &item, sizeof item);
    return page;
}

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
        if (result != 0)
            state.SkipWithError("the page was not walked to its end");
    }
    state.SetItemsProcessed(state.iterations() * kItems);
}

void copyPage(benchmark::State& state) {
    const auto page = plainPage();
    uint8_t copy[kResponseBufferSize];
    for (auto _ : state) {
        std::memcpy(copy, page.data(), page.size());
        benchmark::DoNotOptimize(copy);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kItems);
}

BENCHMARK(walkPage);
BENCHMARK(copyPage);

}  // namespace

int main(int argc, char** argv) {
    return runBenchmarks(argc, argv, {{"walkPage", "copyPage", 0}});
}

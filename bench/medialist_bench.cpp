// What counting, sorting and walking cost, on a media database that answers from memory.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <optional>
#include <random>

#include "bench/ratio.h"
#include <mediacheckd/medialist/zep_media_list.h>
#include <mediacheckd/platform/csi.h>
#include <mediacheckd/platform/debug_level.h>
#include <mediacheckd/platform/vxipc.h>
#include <mediacheckd/vcore/logger.h>
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/zep_queries.h>

namespace {

constexpr uint32_t kPageSize = 15;

// One item as it stands in a page: every other one is a video with its own record behind it.
struct StoredItem {
    db_item_record item;
    db_video_specific_info video;
};

// The database holds total items, which repeat the stored ones.
std::vector<StoredItem> storage;
uint32_t total;
db_list_request request;

void fill(uint32_t items) {
    if (storage.size() == items) {
        return;
    }
    std::mt19937 random(1);
    const auto below = [&](uint32_t n) { return static_cast<uint32_t>(random()) % n; };
    constexpr uint32_t kVideos[] = {DB_CONTENT_TYPE_SINGLE_VIDEO, DB_CONTENT_TYPE_TIME_LAPSE_VIDEO};
    constexpr uint32_t kPhotos[] = {DB_CONTENT_TYPE_SINGLE_PHOTO, DB_CONTENT_TYPE_NIGHT_PHOTO};
    storage.assign(items, {});
    for (uint32_t i = 0; i < items; ++i) {
        auto& [item, video] = storage[i];
        item.content_type = i % 2 == 0 ? kPhotos[below(2)] : kVideos[below(2)];
        std::memcpy(item.dir_name, "100VMEDI", kDirNameSize);
        std::memcpy(item.file_name, i % 2 == 0 ? "VXMF0001.JPG" : "VXMF0001.MP4", kFileNameSize);
        item.created = 1514764800 + below(5 * 365) * 86400;
        item.highlight_count = below(10) == 0 ? 1 : 0;
        item.size = static_cast<uint64_t>(below(4000)) << 20;
        video.duration_ms = below(600'000);
        video.clip = below(4) == 0 ? 1 : 0;
    }
}

uint8_t* put(uint8_t* place, const void* bytes, size_t size) {
    std::memcpy(place, bytes, size);
    return place + size;
}

}  // namespace

// The closed libraries, answering list queries from memory.

uint32_t g_debug_level = 0;

int csi_get(int, uint32_t, uint32_t*, void*) {
    return -1;
}

int vxIpcInit(const char*, vxIpcEndpoint*) {
    return 0;
}

int vxIpcSend(vxIpcEndpoint*, const void* message, int length) {
    std::memcpy(&request, message, std::min(sizeof request, static_cast<size_t>(length)));
    return 0;
}

int vxIpcReceive(vxIpcEndpoint*, void* buffer, int) {
    const bool ofItems = (request.query_options & QUERY_OPTION_VIDEO) != 0;
    const uint32_t entries = ofItems ? total : 0;
    const uint32_t first = std::min<uint32_t>(request.starting_index, entries);
    const uint32_t count = std::min<uint32_t>(request.header.request_count, entries - first);
    db_list_response_header header{};
    header.header.count_returned = count;
    header.header.token = request.header.token;
    header.total_entries = entries;
    header.session_id = 1;
    auto* const start = static_cast<uint8_t*>(buffer);
    uint8_t* end = put(start, &header, sizeof header);
    for (uint32_t i = first; i < first + count; ++i) {
        const StoredItem& stored = storage[i % storage.size()];
        const bool video = isVideo(stored.item.content_type);
        end = put(end, &stored, video ? sizeof(StoredItem) : sizeof(db_item_record));
    }
    return static_cast<int>(end - start);
}

void vxIpcDestroy(vxIpcEndpoint*) {}

namespace {

constexpr const char* kDefaultRules = nullptr;
constexpr const char* kThreeRules =
    R"({"sort_rules": ["hilighted_first", "media_type", "date_by_day_newest_first"],
        "media_type_order": ["video", "photo"]})";

// Sorting needs items that differ; counting and walking few, lest the database's own memory be what
// grows with its items.
constexpr uint32_t kAllDistinct = UINT32_MAX;
constexpr uint32_t kFewDistinct = 1000;

std::vector<UploadRule> rules = {{1, UPLOAD_RULE_STATUS_0}, {0, UPLOAD_RULE_ANY}};

uint32_t prepare(benchmark::State& state, uint32_t distinct) {
    const auto items = static_cast<uint32_t>(state.range(0));
    fill(std::min(items, distinct));
    total = items;
    // As the daemon runs: there is a logger, and it filters every line.
    vcore::Logger::init(0, 0, 0xFF, LOG_OUT_STDOUT, "");
    state.counters["per_item"] = benchmark::Counter(
        items, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    return items;
}

double allocatedBytes() {
    const auto info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

void countItems(benchmark::State& state) {
    const uint32_t items = prepare(state, kFewDistinct);
    for (auto _ : state) {
        const double before = allocatedBytes();
        ZEPMediaList list;
        benchmark::DoNotOptimize(list.getMediaCount(rules));
        state.counters["bytes_per_item"] = (allocatedBytes() - before) / items;
    }
}

void fetchPages(uint32_t items, uint32_t pageSize, zep_item_callback callback, void* context) {
    uint32_t session = 0;
    for (uint32_t index = 0; index <= items; index += pageSize) {
        benchmark::DoNotOptimize(dbGetZEPItems(pageSize, index, nullptr, callback, context, nullptr,
                                               nullptr, &session, nullptr));
    }
}

void pagesOnly(benchmark::State& state) {
    const uint32_t items = prepare(state, kFewDistinct);
    for (auto _ : state) {
        fetchPages(
            items, kPageSize, [](void*, zep_item_s*) {}, nullptr);
    }
}

void walkItems(benchmark::State& state) {
    prepare(state, kFewDistinct);
    ZEPMediaList list;
    benchmark::DoNotOptimize(list.getMediaCount(rules));
    for (auto _ : state) {
        MediaOutput out;
        list.rewind();
        while (list.getNextMedia(&out, rules) == ZEPMediaList::kItem) {
            out.files.clear();
        }
    }
}

void itemsOnly(benchmark::State& state) {
    const uint32_t items = prepare(state, kFewDistinct);
    for (auto _ : state) {
        fetchPages(
            items, 1, [](void*, zep_item_s*) {}, nullptr);
    }
}

void sortList(benchmark::State& state, const char* document) {
    prepare(state, kAllDistinct);
    std::optional<ZEPMediaList> list;
    for (auto _ : state) {
        state.PauseTiming();
        list.emplace();
        benchmark::DoNotOptimize(list->getMediaCount(rules));
        state.ResumeTiming();
        benchmark::DoNotOptimize(list->sort(document));
    }
}

int place(const MediaEntry& entry) {
    switch (entry.type()) {
        case DB_CONTENT_TYPE_SINGLE_VIDEO:
        case DB_CONTENT_TYPE_GROUPED_VIDEO:
        case DB_CONTENT_TYPE_CHAPTERED_VIDEO:
            return entry.clip() != 0 ? 2 : 0;
        case DB_CONTENT_TYPE_SINGLE_PHOTO:
        case DB_CONTENT_TYPE_NIGHT_PHOTO:
            return 1;
        default:
            return 2;
    }
}

// The two orders, each as one comparison written by hand.

constexpr auto kByDefaultRules = [](const MediaEntry& a, const MediaEntry& b) {
    if (a.year() != b.year()) {
        return a.year() > b.year();
    }
    if (a.yday() != b.yday()) {
        return a.yday() > b.yday();
    }
    return a.sizeMiB() < b.sizeMiB();
};

constexpr auto kByThreeRules = [](const MediaEntry& a, const MediaEntry& b) {
    if (a.highlighted() != b.highlighted()) {
        return a.highlighted() > b.highlighted();
    }
    const int placeA = place(a);
    const int placeB = place(b);
    if (placeA != placeB) {
        return placeA < placeB;
    }
    if (a.year() != b.year()) {
        return a.year() > b.year();
    }
    return a.yday() > b.yday();
};

void collect(void* context, zep_item_s* item) {
    auto& entries = *static_cast<std::vector<MediaEntry>*>(context);
    entries.emplace_back(*item, static_cast<uint32_t>(entries.size()));
}

template <typename Before>
void sortByHand(benchmark::State& state, Before before) {
    const uint32_t items = prepare(state, kAllDistinct);
    std::vector<MediaEntry> entries;
    fetchPages(items, kPageSize, collect, &entries);
    std::vector<MediaEntry> sorted;
    for (auto _ : state) {
        state.PauseTiming();
        sorted = entries;
        state.ResumeTiming();
        std::sort(sorted.begin(), sorted.end(), before);
        benchmark::DoNotOptimize(sorted.data());
    }
}

BENCHMARK(countItems)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Arg(200'000);
BENCHMARK(pagesOnly)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Arg(200'000);
BENCHMARK(walkItems)->Arg(1'000)->Arg(10'000);
BENCHMARK(itemsOnly)->Arg(1'000)->Arg(10'000);
BENCHMARK_CAPTURE(sortList, default, kDefaultRules)->Arg(10'000)->Arg(200'000);
BENCHMARK_CAPTURE(sortByHand, default, kByDefaultRules)->Arg(10'000)->Arg(200'000);
BENCHMARK_CAPTURE(sortList, three, kThreeRules)->Arg(10'000)->Arg(200'000);
BENCHMARK_CAPTURE(sortByHand, three, kByThreeRules)->Arg(10'000)->Arg(200'000);

}  // namespace

int main(int argc, char** argv) {
    // Freed memory stays with the process: a list pays for its growth, not for the kernel's pages.
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, INT_MAX);
    return runBenchmarks(argc, argv,
                         {{"countItems/200000", "pagesOnly/200000", 1.15},
                          {"countItems/200000", "countItems/1000", 200 * 1.1},
                          {"walkItems/10000", "itemsOnly/10000", 1.2},
                          {"sortList/default/10000", "sortByHand/default/10000", 0.5},
                          {"sortList/default/200000", "sortByHand/default/200000", 0.5},
                          {"sortList/three/10000", "sortByHand/three/10000", 0.5},
                          {"sortList/three/200000", "sortByHand/three/200000", 0.5}});
}

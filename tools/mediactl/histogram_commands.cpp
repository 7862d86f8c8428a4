// histogram: the media counts of the database.
#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>

#include "tools/mediactl/command_line.h"
#include "tools/mediactl/output.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/zep_queries.h>

namespace mediactl {

namespace {

constexpr uint32_t kNoCount =
    UINT32_MAX;  // stays where an answer too short leaves the counts alone

int histogram() {
    std::array<uint32_t, kHistogramBuckets> counts;
    counts.fill(kNoCount);
    const int result = dbGetMediaHistogram(counts.data(), nullptr, counts.data());
    if (result != 0) {
        return fail("the histogram query failed (%d)", result);
    }
    if (std::ranges::count(counts, kNoCount) == kHistogramBuckets) {
        return fail("the histogram query got no counts");
    }
    Listing listing("buckets", {{"bucket", "bucket", 6}, {"count", "count", 10}});
    for (size_t bucket = 0; bucket < counts.size(); ++bucket) {
        listing.add({{"bucket", bucket}, {"count", counts[bucket]}});
    }
    listing.end({{"total", std::accumulate(counts.begin(), counts.end(), uint64_t{0})}});
    return kDone;
}

}  // namespace

void addHistogramCommands(CommandLine& line) {
    line.add("histogram", "Print the 32 counts of the media histogram", histogram);
}

}  // namespace mediactl

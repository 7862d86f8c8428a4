// histogram: the media counts of the database.
#include <array>
#include <cstdint>
#include <numeric>

#include "tools/mediactl/command_line.h"
#include "tools/mediactl/exchange_watch.h"
#include "tools/mediactl/output.h"
#include "tools/mediactl/record_json.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/zep_queries.h>

namespace mediactl {

namespace {

int histogram() {
    std::array<uint32_t, kHistogramBuckets> counts = {};
    const int result = dbGetMediaHistogram(counts.data(), nullptr, counts.data());
    if (result != 0 || exchangeTrouble()) {
        return failExchange("the histogram cannot be read");
    }
    Listing listing("buckets",
                    {{"bucket", "bucket", 6}, {"count", "count", 10}, {"kind", "kind", -1}});
    for (size_t bucket = 0; bucket < counts.size(); ++bucket) {
        listing.add({{"bucket", bucket},
                     {"count", counts[bucket]},
                     {"kind", kindName(static_cast<uint32_t>(bucket))}});
    }
    listing.end({{"total", std::accumulate(counts.begin(), counts.end(), uint64_t{0})}});
    return kDone;
}

}  // namespace

void addHistogramCommands(CommandLine& line) {
    line.add("histogram", "Print the 32 counts of the media histogram", histogram);
}

}  // namespace mediactl

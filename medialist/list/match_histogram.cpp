// Fetches the counts of media by upload kind and tells whether one is wanted.
#include <array>
#include <cstdio>
#include <cstring>

#include "vcore/base/signed_word.h"
#include "vcore/base/standard_output.h"
#include <mediacheckd/medialist/zep_media_list.h>
#include <mediacheckd/vxMediaRTOSDB/zep_queries.h>

namespace {

using Histogram = std::array<uint32_t, 32>;

constexpr unsigned kSelectableBuckets = 5;

// Whoever reads it sees it before the program goes on; the program goes on where nobody reads.
void printHistogram(const Histogram& histogram) {
    // Without memory of the heap: where that has run out, the counts are still right.
    char dump[1024] = "\nZEPMediaList::matchHistogram() histogram dump:\n";
    size_t length = strlen(dump);
    for (unsigned i = 0; i < histogram.size(); ++i) {
        length += static_cast<size_t>(snprintf(dump + length, sizeof dump - length, " h[%d]=%d ",
                                               signedWord(i), signedWord(histogram[i])));
    }
    dump[length++] = '\n';
    vcore::showText({dump, length});
}

bool holdsSelected(const Histogram& histogram, int mask) {
    for (unsigned i = 0; i < kSelectableBuckets; ++i) {
        if ((mask >> i & 1) != 0 && histogram[i] != 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

int ZEPMediaList::matchHistogram(int mask) {
    Histogram histogram{};
    reset();
    uint32_t sessionId = mSessionId;
    if (dbGetMediaHistogram(mToken, &sessionId, histogram.data()) != 0) {
        return -1;
    }
    printHistogram(histogram);
    // The client reports no session with the histogram, so far: then the id stays the list's own.
    if (dropChangedSession(sessionId)) {
        return -1;
    }
    mSessionId = sessionId;
    return holdsSelected(histogram, mask) ? 1 : 0;
}

// Brings the entries into the order that the sort rules give.
#include <algorithm>
#include <memory>

#include "medialist/sort/sort_key.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/medialist/sort_rules.h>
#include <mediacheckd/medialist/stopwatch.h>
#include <mediacheckd/medialist/zep_media_list.h>
#include <mediacheckd/vcore/log.h>

int ZEPMediaList::sort(const char* json) {
    if (!mCounted) {
        const int result = buildEntries();
        if (result != 0) {
            return result;
        }
    }
    const std::unique_ptr<Comparinator> order(create(json));
    if (order == nullptr) {
        VLOG_ERROR("[ZML]: sort: failed to create comparison operator.\n");
        return -1;
    }

    Stopwatch stopwatch;
    stopwatch.control(Stopwatch::kCalibrate | Stopwatch::kClear | Stopwatch::kStart);
    const auto* const rules = dynamic_cast<const CompoundCompare*>(order.get());
    if (rules == nullptr || !sortByKeys(*rules, mEntries)) {
        std::ranges::sort(mEntries, [&order](const MediaEntry& a, const MediaEntry& b) {
            return order->compare(&a, &b) > 0;
        });
    }
    const double seconds = stopwatch.control(Stopwatch::kStop);
    VLOG_INFO("[ZML]: sort: sort took %1.2lf seconds\n", seconds);
    logEntries();
    rewind();
    return 0;
}

void ZEPMediaList::logEntries() const {
    if (!VLOG_PASSES(vcore::kLevelNoise)) {
        return;
    }
    for (const MediaEntry& entry : mEntries) {
        VLOG_NOISE("[ZML]: %d y:%d d:%d t:%d c:%d s:%d h:%d\n", signedWord(entry.index()),
                   signedWord(entry.year()), signedWord(entry.yday()), signedWord(entry.type()),
                   signedWord(entry.count()), signedWord(entry.sizeMiB()),
                   signedWord(entry.highlighted()));
    }
}

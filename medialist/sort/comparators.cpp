#include <mediacheckd/medialist/comparators.h>

#include <algorithm>

#include "medialist/sort/media_class.h"

namespace {

// Fields are narrower than an int: no difference overflows.
int difference(uint32_t a, uint32_t b) {
    return static_cast<int>(a) - static_cast<int>(b);
}

int dayDifference(const MediaEntry& a, const MediaEntry& b) {
    const int years = difference(a.year(), b.year());
    const int days = difference(a.yday(), b.yday());
    return years != 0 ? years : days;
}

}  // namespace

int CompoundCompare::compare(const MediaEntry* a, const MediaEntry* b) {
    for (const auto& comparator : mComparators) {
        const int result = comparator->compare(a, b);
        if (result != 0) {
            return result;
        }
    }
    return 0;
}

int CompareFileSize::compare(const MediaEntry* a, const MediaEntry* b) {
    return difference(b->sizeMiB(), a->sizeMiB());
}

int CompareHighlight::compare(const MediaEntry* a, const MediaEntry* b) {
    return difference(a->highlighted(), b->highlighted());
}

int CompareDayOldestFirst::compare(const MediaEntry* a, const MediaEntry* b) {
    return dayDifference(*b, *a);
}

int CompareByDayNewestFirst::compare(const MediaEntry* a, const MediaEntry* b) {
    return dayDifference(*a, *b);
}

static_assert(MEDIA_CLASS_OTHER + 1 < 1 << CompareMediaType::kPlaceBits);

CompareMediaType::CompareMediaType(std::span<const int> order) {
    std::vector<int> classes;
    for (const int code : order) {
        const bool known = code >= 0 && code <= MEDIA_CLASS_OTHER;
        if (known && std::ranges::find(classes, code) == classes.end()) {
            classes.push_back(code);
        }
    }
    for (uint32_t kind = 0; kind < mPlaces.size(); ++kind) {
        const auto place = std::ranges::find(
            classes, mediaClass(MediaEntry::typeOf(kind), MediaEntry::clipOf(kind)));
        mPlaces[kind] = static_cast<uint8_t>(place - classes.begin());
    }
}

int CompareMediaType::compare(const MediaEntry* a, const MediaEntry* b) {
    const uint32_t placeA = placeOf(*a);
    const uint32_t placeB = placeOf(*b);
    return static_cast<int>(placeB > placeA) - static_cast<int>(placeB < placeA);
}

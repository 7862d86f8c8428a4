#include "medialist/sort/sort_key.h"

#include <algorithm>
#include <boost/sort/spreadsort/integer_sort.hpp>
#include <new>

namespace {

constexpr unsigned kDayBits = 14;

uint32_t dayOf(const MediaEntry& entry) {
    return entry.year() << 9 | entry.yday();
}

// A key carries its entry's place in its lowest bits.
constexpr unsigned kPlaceBits = 18;
static_assert(SortKey::kBits + kPlaceBits <= 64);

}  // namespace

SortKey::SortKey(const CompoundCompare& order) {
    bool hasDay = false;
    for (const auto& rule : order.comparators()) {
        const auto add = [this](Field field) {
            if (std::ranges::find(mFields, field) == mFields.end()) {
                mFields.push_back(field);
            }
        };
        const bool newest = dynamic_cast<const CompareByDayNewestFirst*>(rule.get()) != nullptr;
        const bool oldest = dynamic_cast<const CompareDayOldestFirst*>(rule.get()) != nullptr;
        const auto* const mediaType = dynamic_cast<const CompareMediaType*>(rule.get());
        if (dynamic_cast<const CompareHighlight*>(rule.get()) != nullptr) {
            add(Field::kHighlight);
        } else if (dynamic_cast<const CompareFileSize*>(rule.get()) != nullptr) {
            add(Field::kSize);
        } else if ((newest || oldest) && !hasDay) {
            add(newest ? Field::kNewestDay : Field::kOldestDay);
            hasDay = true;
        } else if (mediaType != nullptr && mMediaType == nullptr) {
            add(Field::kMediaType);
            mMediaType = mediaType;
        }
    }
}

uint64_t SortKey::of(const MediaEntry& entry) const {
    uint64_t key = 0;
    const auto append = [&key](unsigned bits, uint32_t value) { key = key << bits | value; };
    for (const Field field : mFields) {
        switch (field) {
            case Field::kHighlight:
                append(1, entry.highlighted() ^ 1);
                break;
            case Field::kNewestDay:
                append(kDayBits, ~dayOf(entry) & ((1U << kDayBits) - 1));
                break;
            case Field::kOldestDay:
                append(kDayBits, dayOf(entry));
                break;
            case Field::kSize:
                append(22, entry.sizeMiB());
                break;
            case Field::kMediaType:
                append(CompareMediaType::kPlaceBits,
                       mMediaType != nullptr ? mMediaType->placeOf(entry) : 0);
                break;
        }
    }
    return key;
}

bool sortByKeys(const CompoundCompare& order, std::vector<MediaEntry>& entries) try {
    if (entries.size() > 1U << kPlaceBits) {
        return false;
    }
    const SortKey key(order);
    std::vector<uint64_t> keys(entries.size());
    for (size_t i = 0; i < keys.size(); ++i) {
        keys[i] = key.of(entries[i]) << kPlaceBits | i;
    }
    std::vector<MediaEntry> sorted;
    sorted.reserve(entries.size());
    boost::sort::spreadsort::integer_sort(keys.begin(), keys.end());
    for (const uint64_t place : keys) {
        sorted.push_back(entries[place & ((1U << kPlaceBits) - 1)]);
    }
    entries.swap(sorted);
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

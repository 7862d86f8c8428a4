// An order of entries as one number an entry: numbers sort in a fraction of the time that asking
// the comparators for each pair takes.
#pragma once

#include <cstdint>
#include <vector>

#include <mediacheckd/medialist/comparators.h>

class SortKey {
  public:
    // Highlight, day, size and place of the media class, each once: a rule decides nothing behind
    // one that looks at the same field.
    static constexpr unsigned kBits = 1 + 14 + 22 + CompareMediaType::kPlaceBits;

    // order: as create() gives it; must outlive the key.
    explicit SortKey(const CompoundCompare& order);

    // Returns a number below 2^kBits; of two entries the one with the smaller number comes first.
    [[nodiscard]] uint64_t of(const MediaEntry& entry) const;

  private:
    enum class Field { kHighlight, kNewestDay, kOldestDay, kSize, kMediaType };

    std::vector<Field> mFields;
    const CompareMediaType* mMediaType = nullptr;
};

// Puts the entries into the order. Returns false, with nothing changed, when there is no memory for
// their keys.
[[nodiscard]] bool sortByKeys(const CompoundCompare& order, std::vector<MediaEntry>& entries);

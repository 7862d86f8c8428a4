// How counted entries are put in order.
#pragma once

#include <array>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include <mediacheckd/medialist/media_entry.h>

// Other components find these by name.
#pragma GCC visibility push(default)

// Compares two entries.
class Comparinator {
  public:
    virtual ~Comparinator() = default;

    // Returns a number greater than 0 when a comes before b, less than 0 when b comes first, and 0
    // when either may.
    virtual int compare(const MediaEntry* a, const MediaEntry* b) = 0;
};

// Asks its comparators in order; the first that has a preference decides.
class CompoundCompare final : public Comparinator {
  public:
    void append(std::unique_ptr<Comparinator> comparator) {
        mComparators.push_back(std::move(comparator));
    }

    int compare(const MediaEntry* a, const MediaEntry* b) override;

    // In their order.
    const std::vector<std::unique_ptr<Comparinator>>& comparators() const { return mComparators; }

  private:
    std::vector<std::unique_ptr<Comparinator>> mComparators;
};

// Smaller in MiB first.
class CompareFileSize final : public Comparinator {
  public:
    int compare(const MediaEntry* a, const MediaEntry* b) override;
};

// With a highlight first.
class CompareHighlight final : public Comparinator {
  public:
    int compare(const MediaEntry* a, const MediaEntry* b) override;
};

// Earlier UTC day first.
class CompareDayOldestFirst final : public Comparinator {
  public:
    int compare(const MediaEntry* a, const MediaEntry* b) override;
};

// Later UTC day first.
class CompareByDayNewestFirst final : public Comparinator {
  public:
    int compare(const MediaEntry* a, const MediaEntry* b) override;
};

// By media class, in a given order; classes that it does not name come last.
class CompareMediaType final : public Comparinator {
  public:
    // order: media-class codes; of a repeated code the first place counts.
    explicit CompareMediaType(std::span<const int> order);

    int compare(const MediaEntry* a, const MediaEntry* b) override;

    // Returns the place of the entry's media class among those of the order, from 0.
    static constexpr unsigned kPlaceBits = 4;
    uint32_t placeOf(const MediaEntry& entry) const { return mPlaces[entry.kind()]; }

  private:
    std::array<uint8_t, size_t{1} << MediaEntry::kKindBits> mPlaces;  // by MediaEntry::kind
};

#pragma GCC visibility pop

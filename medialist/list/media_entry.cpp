#include <mediacheckd/medialist/media_entry.h>

#include <chrono>

#include "medialist/list/item_span.h"

template <unsigned First, unsigned Width>
void MediaEntry::setField(uint32_t value) {
    constexpr unsigned kShift = First - 8 * kWindow<First>;
    constexpr uint32_t kMask = ((uint32_t{1} << Width) - 1) << kShift;
    uint32_t bits = (window<First>() & ~kMask) | (value << kShift & kMask);
    for (unsigned i = 0; i < 4; ++i, bits >>= 8) {
        mBytes[kWindow<First> + i] = static_cast<uint8_t>(bits);
    }
}

namespace {

// Collects fields in whole words: one written into bytes of which the next one reads some would
// keep the processor waiting.
class FieldWords {
  public:
    template <unsigned First, unsigned Width>
    void set(uint32_t value) {
        constexpr unsigned kWord = First / 64;
        constexpr unsigned kShift = First % 64;
        const uint64_t bits = value & ((uint64_t{1} << Width) - 1);
        mWords[kWord] |= bits << kShift;
        if constexpr (kShift + Width > 64) {
            mWords[kWord + 1] |= bits >> (64 - kShift);
        }
    }

    uint8_t byte(size_t index) const {
        return static_cast<uint8_t>(mWords[index / 8] >> index % 8 * 8);
    }

  private:
    uint64_t mWords[2] = {};
};

}  // namespace

MediaEntry::MediaEntry(const zep_item_s& item, uint32_t index) {
    using std::chrono::January;
    const auto day = std::chrono::floor<std::chrono::days>(
        std::chrono::sys_seconds(std::chrono::seconds(item.timestamp)));
    const auto year = std::chrono::year_month_day(day).year();
    const auto yday = (day - std::chrono::sys_days(year / January / 1)).count();

    FieldWords fields;
    fields.set<0, 18>(index);
    fields.set<18, 4>(item.content_type);
    fields.set<22, 1>(item.highlight != 0);
    fields.set<23, 1>(item.clip);
    fields.set<25, 5>(static_cast<uint32_t>(static_cast<int>(year) - 2015));
    fields.set<30, 9>(static_cast<uint32_t>(yday));
    fields.set<39, 22>(static_cast<uint32_t>(item.size_bytes >> 20));
    fields.set<61, 25>(item.duration_s);
    fields.set<86, 18>(fileCount(item));
    for (size_t i = 0; i < sizeof mBytes; ++i) {
        mBytes[i] = fields.byte(i);
    }
}

void MediaEntry::fold(MediaEntry& span) {
    setField<39, 22>(sizeMiB() + span.sizeMiB());
    setField<86, 18>(count() + span.count());
    span.setField<24, 1>(1);
}

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

MediaEntry::MediaEntry(const zep_item_s& item, uint32_t index) : mBytes{} {
    using std::chrono::January;
    const auto day = std::chrono::floor<std::chrono::days>(
        std::chrono::sys_seconds(std::chrono::seconds(item.timestamp)));
    const auto year = std::chrono::year_month_day(day).year();
    const auto yday = (day - std::chrono::sys_days(year / January / 1)).count();

    setField<0, 18>(index);
    setField<18, 4>(item.content_type);
    setField<22, 1>(item.highlight != 0);
    setField<23, 1>(item.clip);
    setField<25, 5>(static_cast<uint32_t>(static_cast<int>(year) - 2015));
    setField<30, 9>(static_cast<uint32_t>(yday));
    setField<39, 22>(static_cast<uint32_t>(item.size_bytes >> 20));
    setField<61, 25>(item.duration_s);
    setField<86, 18>(fileCount(item));
}

void MediaEntry::fold(MediaEntry& span) {
    setField<39, 22>(sizeMiB() + span.sizeMiB());
    setField<86, 18>(count() + span.count());
    span.setField<24, 1>(1);
}

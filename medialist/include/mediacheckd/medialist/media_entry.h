// The record that counting keeps of each item.
#pragma once

#include <cstdint>

#include <mediacheckd/vxMediaRTOSDB/zep_item.h>

// Other components find these by name.
#pragma GCC visibility push(default)

// One counted item in 13 bytes. Fields lie bit behind bit, each from its lowest bit up, and are cut
// to their width.
//
//   bits    0-17  index        database index
//          18-21  type         content type
//             22  highlighted  carries a highlight
//             23  clip         is a clip
//             24  merged       was folded into the first entry of its group
//          25-29  year         UTC year since 2015
//          30-38  yday         UTC day of the year, from 0
//          39-60  sizeMiB      size in MiB, rounded down; of all spans in a group's first entry
//          61-85  durationS    duration in seconds
//         86-103  count        number of files; of all spans in a group's first entry
class MediaEntry {
  public:
    MediaEntry(const zep_item_s& item, uint32_t index);

    uint32_t index() const { return field<0, 18>(); }
    uint32_t type() const { return field<18, 4>(); }
    uint32_t highlighted() const { return field<22, 1>(); }
    uint32_t clip() const { return field<23, 1>(); }
    uint32_t merged() const { return field<24, 1>(); }
    uint32_t year() const { return field<25, 5>(); }
    uint32_t yday() const { return field<30, 9>(); }
    uint32_t sizeMiB() const { return field<39, 22>(); }
    uint32_t durationS() const { return field<61, 25>(); }
    uint32_t count() const { return field<86, 18>(); }

    // Type, highlighted and clip as one number, by which a table can be indexed.
    static constexpr unsigned kKindBits = 6;
    uint32_t kind() const { return field<18, kKindBits>(); }
    static constexpr uint32_t typeOf(uint32_t kind) { return kind & 0xF; }
    static constexpr bool clipOf(uint32_t kind) { return (kind >> 5 & 1) != 0; }

    // Adds size and count of a later span of this entry's group and marks the span as merged.
    void fold(MediaEntry& span);

  private:
    // Every field lies within four successive bytes, which compilers join to one load.
    template <unsigned First>
    static constexpr unsigned kWindow = First / 8 < 9 ? First / 8 : 9;

    template <unsigned First>
    uint32_t window() const {
        const uint8_t* const bytes = mBytes + kWindow<First>;
        return static_cast<uint32_t>(bytes[0]) | static_cast<uint32_t>(bytes[1]) << 8 |
               static_cast<uint32_t>(bytes[2]) << 16 | static_cast<uint32_t>(bytes[3]) << 24;
    }

    template <unsigned First, unsigned Width>
    uint32_t field() const {
        constexpr unsigned kShift = First - 8 * kWindow<First>;
        static_assert(kShift + Width <= 32);
        return window<First>() >> kShift & ((uint32_t{1} << Width) - 1);
    }

    template <unsigned First, unsigned Width>
    void setField(uint32_t value);

    uint8_t mBytes[13];
};
static_assert(sizeof(MediaEntry) == 13 && alignof(MediaEntry) == 1);

#pragma GCC visibility pop

// The numbers of a group and the masks that mark some of them.
//
// A mask has one bit a number, from the group's first_number, the most significant bit of the first
// byte first, in whole 32-bit words. A set bit means a present member in the member mask; a clear
// bit means a missing member there and a highlighted one in the highlight mask.
#pragma once

#include <cstdint>
#include <span>

#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>

// File names carry four digits, so no group spans more numbers than this.
constexpr uint32_t kMaxGroupSpan = 10000;

// The group's numbers make no sense; it has no members.
constexpr bool isDamaged(const db_group_info& group) {
    return group.last_number < group.first_number ||
           group.last_number - group.first_number >= kMaxGroupSpan;
}

// Returns how many numbers the group spans, missing members included; 0 for a damaged group.
constexpr uint32_t numberCount(const db_group_info& group) {
    return isDamaged(group) ? 0 : group.last_number - group.first_number + 1;
}

// Returns the bytes that a mask of the group takes in a response, by the distance from first to
// last number in 32 bits: that is what the database counts with, for a damaged group too.
constexpr uint64_t maskSize(const db_group_info& group) {
    const uint32_t distance = group.last_number - group.first_number;
    return (uint64_t{distance} / 32 + 1) * sizeof(u32le);
}

// Tells whether the bit of the number first_number + index is set; bits outside the mask are clear.
constexpr bool isMarked(std::span<const uint8_t> mask, uint32_t index) {
    return index / 8 < mask.size() && (mask[index / 8] >> (7 - index % 8) & 1) != 0;
}

// Tells whether the member first_number + index exists.
// memberMask: read only when num_missing is not 0.
constexpr bool isPresent(const db_group_info& group, std::span<const uint8_t> memberMask,
                         uint32_t index) {
    return group.num_missing == 0 || isMarked(memberMask, index);
}

// Calls visit(number) for each present member, upwards.
template <typename Visit>
void forEachMember(const db_group_info& group, std::span<const uint8_t> memberMask, Visit visit) {
    for (uint32_t i = 0; i < numberCount(group); ++i) {
        if (isPresent(group, memberMask, i)) {
            visit(group.first_number + i);
        }
    }
}

// Calls visit(number) for the numbers whose bit is clear, upwards, at most limit of them. Without a
// mask nothing is known of any number.
template <typename Visit>
void forEachUnmarked(const db_group_info& group, std::span<const uint8_t> mask, uint32_t limit,
                     Visit visit) {
    const uint32_t numbers = mask.empty() ? 0 : numberCount(group);
    for (uint32_t i = 0; i < numbers && limit > 0; ++i) {
        if (isMarked(mask, i)) {
            continue;
        }
        visit(group.first_number + i);
        --limit;
    }
}

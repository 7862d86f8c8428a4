// Field types of the records on the wire: little-endian byte arrays of alignment 1, so that a
// record may lie at any address and reads the same on every processor.
#pragma once

#include <cstdint>
#include <type_traits>

struct u32le {
    uint8_t bytes[4];

    constexpr operator uint32_t() const {
        return static_cast<uint32_t>(bytes[0]) | static_cast<uint32_t>(bytes[1]) << 8 |
               static_cast<uint32_t>(bytes[2]) << 16 | static_cast<uint32_t>(bytes[3]) << 24;
    }

    constexpr u32le& operator=(uint32_t value) {
        for (auto& byte : bytes) {
            byte = static_cast<uint8_t>(value);
            value >>= 8;
        }
        return *this;
    }
};

struct u64le {
    u32le low;
    u32le high;

    constexpr operator uint64_t() const {
        return static_cast<uint64_t>(high) << 32 | static_cast<uint32_t>(low);
    }

    constexpr u64le& operator=(uint64_t value) {
        low = static_cast<uint32_t>(value);
        high = static_cast<uint32_t>(value >> 32);
        return *this;
    }
};

static_assert(sizeof(u32le) == 4 && alignof(u32le) == 1 && std::is_trivial_v<u32le>);
static_assert(sizeof(u64le) == 8 && alignof(u64le) == 1 && std::is_trivial_v<u64le>);

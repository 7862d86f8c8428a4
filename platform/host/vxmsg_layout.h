// The byte encoding of event messages on the host; docs/event-message.md tells it by example.
// Numbers are little-endian.
#pragma once

#include <endian.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace host {

inline constexpr std::size_t kMessageTypeOffset = 0;           // two characters
inline constexpr std::size_t kMessageLengthOffset = 2;         // u16, of the whole message so far
inline constexpr std::size_t kMessageIdOffset = 4;             // u32
inline constexpr std::size_t kMessagePayloadLengthOffset = 8;  // u16
inline constexpr std::size_t kMessageHeaderSize = 10;

inline constexpr std::size_t kElementTagOffset = 0;     // u8
inline constexpr std::size_t kElementKindOffset = 1;    // u8, a VxmsgElementKind
inline constexpr std::size_t kElementLengthOffset = 2;  // u16
inline constexpr std::size_t kElementHeaderSize = 4;

// The append call that an element comes from.
enum class VxmsgElementKind : uint8_t { kBinary = 1, kData = 2 };

inline void putU16(unsigned char* at, uint16_t value) noexcept {
    const uint16_t wire = htole16(value);
    std::memcpy(at, &wire, sizeof(wire));
}

inline void putU32(unsigned char* at, uint32_t value) noexcept {
    const uint32_t wire = htole32(value);
    std::memcpy(at, &wire, sizeof(wire));
}

inline uint16_t getU16(const unsigned char* at) noexcept {
    uint16_t wire = 0;
    std::memcpy(&wire, at, sizeof(wire));
    return le16toh(wire);
}

inline uint32_t getU32(const unsigned char* at) noexcept {
    uint32_t wire = 0;
    std::memcpy(&wire, at, sizeof(wire));
    return le32toh(wire);
}

}  // namespace host

#include <mediacheckd/platform/vxmsg.h>

#include <endian.h>

#include <algorithm>
#include <cstring>
#include <limits>

namespace {

// The byte encoding of event messages on the host; docs/event-message.md tells it by example.
// Numbers are little-endian.
constexpr size_t kMessageTypeOffset = 0;           // two characters
constexpr size_t kMessageLengthOffset = 2;         // u16, of the whole message so far
constexpr size_t kMessageIdOffset = 4;             // u32
constexpr size_t kMessagePayloadLengthOffset = 8;  // u16
constexpr size_t kMessageHeaderSize = 10;

constexpr size_t kElementTagOffset = 0;     // u8
constexpr size_t kElementKindOffset = 1;    // u8, a ElementKind
constexpr size_t kElementLengthOffset = 2;  // u16
constexpr size_t kElementHeaderSize = 4;

// The append call that an element comes from.
enum class ElementKind : uint8_t { kBinary = 1, kData = 2 };

void putU16(unsigned char* at, uint16_t value) noexcept {
    const uint16_t wire = htole16(value);
    std::memcpy(at, &wire, sizeof(wire));
}

void putU32(unsigned char* at, uint32_t value) noexcept {
    const uint32_t wire = htole32(value);
    std::memcpy(at, &wire, sizeof(wire));
}

uint16_t getU16(const unsigned char* at) noexcept {
    uint16_t wire = 0;
    std::memcpy(&wire, at, sizeof(wire));
    return le16toh(wire);
}

constexpr uint32_t kLengthMax = std::numeric_limits<uint16_t>::max();

uint32_t appendElement(unsigned char* message, uint32_t capacity, uint8_t tag, ElementKind kind,
                       uint32_t length, const void* value) noexcept {
    if (message == nullptr || capacity < kMessageHeaderSize || (value == nullptr && length > 0)) {
        return 0;
    }
    const uint32_t used = getU16(message + kMessageLengthOffset);
    const uint32_t usable = std::min(capacity, kLengthMax);
    if (used < kMessageHeaderSize || used > usable ||
        uint64_t{length} + kElementHeaderSize > usable - used) {
        return 0;
    }
    unsigned char* element = message + used;
    element[kElementTagOffset] = tag;
    element[kElementKindOffset] = static_cast<unsigned char>(kind);
    putU16(element + kElementLengthOffset, static_cast<uint16_t>(length));
    if (length > 0) {
        std::memcpy(element + kElementHeaderSize, value, length);
    }
    const uint32_t added = static_cast<uint32_t>(kElementHeaderSize) + length;
    putU16(message + kMessageLengthOffset, static_cast<uint16_t>(used + added));
    return added;
}

}  // namespace

extern "C" int vxmsg_build(vxmsg_builder* builder, const char* type, const void* payload,
                           uint32_t payloadLength, uint32_t id) {
    if (builder == nullptr) {
        return -1;
    }
    builder->length = 0;
    const uint32_t usable = std::min<uint32_t>(builder->capacity, VXMSG_DATA_SIZE);
    if (type == nullptr || type[0] == '\0' || (payload == nullptr && payloadLength > 0) ||
        uint64_t{payloadLength} + kMessageHeaderSize > usable) {
        return -1;
    }
    builder->length = static_cast<uint32_t>(kMessageHeaderSize) + payloadLength;

    unsigned char* header = builder->data;
    std::memcpy(header + kMessageTypeOffset, type, 2);
    putU16(header + kMessageLengthOffset, static_cast<uint16_t>(builder->length));
    putU32(header + kMessageIdOffset, id);
    putU16(header + kMessagePayloadLengthOffset, static_cast<uint16_t>(payloadLength));
    if (payloadLength > 0) {
        std::memcpy(header + kMessageHeaderSize, payload, payloadLength);
    }
    return 0;
}

extern "C" uint32_t sntlv_add_bin(unsigned char* message, uint32_t capacity, uint8_t tag,
                                  uint32_t length, const void* value) {
    return appendElement(message, capacity, tag, ElementKind::kBinary, length, value);
}

extern "C" uint32_t sntlv_add_dat(unsigned char* message, uint32_t capacity, uint8_t tag,
                                  uint32_t length, const void* value) {
    return appendElement(message, capacity, tag, ElementKind::kData, length, value);
}

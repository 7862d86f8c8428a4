#include <mediacheckd/platform/vxmsg.h>

#include <algorithm>
#include <limits>

#include "platform/host/vxmsg_layout.h"

namespace {

using host::VxmsgElementKind;

constexpr uint32_t kLengthMax = std::numeric_limits<uint16_t>::max();

uint32_t appendElement(unsigned char* message, uint32_t capacity, uint8_t tag,
                       VxmsgElementKind kind, uint32_t length, const void* value) noexcept {
    if (message == nullptr || capacity < host::kMessageHeaderSize ||
        (value == nullptr && length > 0)) {
        return 0;
    }
    const uint32_t used = host::getU16(message + host::kMessageLengthOffset);
    const uint32_t usable = std::min(capacity, kLengthMax);
    if (used < host::kMessageHeaderSize || used > usable ||
        uint64_t{length} + host::kElementHeaderSize > usable - used) {
        return 0;
    }
    unsigned char* element = message + used;
    element[host::kElementTagOffset] = tag;
    element[host::kElementKindOffset] = static_cast<unsigned char>(kind);
    host::putU16(element + host::kElementLengthOffset, static_cast<uint16_t>(length));
    if (length > 0) {
        std::memcpy(element + host::kElementHeaderSize, value, length);
    }
    const uint32_t added = static_cast<uint32_t>(host::kElementHeaderSize) + length;
    host::putU16(message + host::kMessageLengthOffset, static_cast<uint16_t>(used + added));
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
        uint64_t{payloadLength} + host::kMessageHeaderSize > usable) {
        return -1;
    }
    builder->length = static_cast<uint32_t>(host::kMessageHeaderSize) + payloadLength;

    unsigned char* header = builder->data;
    std::memcpy(header + host::kMessageTypeOffset, type, 2);
    host::putU16(header + host::kMessageLengthOffset, static_cast<uint16_t>(builder->length));
    host::putU32(header + host::kMessageIdOffset, id);
    host::putU16(header + host::kMessagePayloadLengthOffset, static_cast<uint16_t>(payloadLength));
    if (payloadLength > 0) {
        std::memcpy(header + host::kMessageHeaderSize, payload, payloadLength);
    }
    return 0;
}

extern "C" uint32_t sntlv_add_bin(unsigned char* message, uint32_t capacity, uint8_t tag,
                                  uint32_t length, const void* value) {
    return appendElement(message, capacity, tag, VxmsgElementKind::kBinary, length, value);
}

extern "C" uint32_t sntlv_add_dat(unsigned char* message, uint32_t capacity, uint8_t tag,
                                  uint32_t length, const void* value) {
    return appendElement(message, capacity, tag, VxmsgElementKind::kData, length, value);
}

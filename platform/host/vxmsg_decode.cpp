#include "platform/host/vxmsg_decode.h"

namespace host {

namespace {

// Takes the first element off the front of rest; none when it does not lie wholly inside.
std::optional<VxmsgElement> takeElement(std::span<const unsigned char>& rest) {
    if (rest.size() < kElementHeaderSize) {
        return std::nullopt;
    }
    const unsigned char kind = rest[kElementKindOffset];
    const std::size_t length = getU16(rest.data() + kElementLengthOffset);
    if (kind < static_cast<unsigned char>(VxmsgElementKind::kBinary) ||
        kind > static_cast<unsigned char>(VxmsgElementKind::kData) ||
        length > rest.size() - kElementHeaderSize) {
        return std::nullopt;
    }
    const VxmsgElement element{rest[kElementTagOffset], static_cast<VxmsgElementKind>(kind),
                               rest.subspan(kElementHeaderSize, length)};
    rest = rest.subspan(kElementHeaderSize + length);
    return element;
}

}  // namespace

std::optional<VxmsgMessage> decodeVxmsg(std::span<const unsigned char> bytes) {
    if (bytes.size() < kMessageHeaderSize ||
        getU16(bytes.data() + kMessageLengthOffset) != bytes.size()) {
        return std::nullopt;
    }
    auto rest = bytes.subspan(kMessageHeaderSize);
    const std::size_t payloadLength = getU16(bytes.data() + kMessagePayloadLengthOffset);
    if (payloadLength > rest.size()) {
        return std::nullopt;
    }
    VxmsgMessage message{
        std::string(bytes.begin() + kMessageTypeOffset, bytes.begin() + kMessageTypeOffset + 2),
        getU32(bytes.data() + kMessageIdOffset),
        rest.first(payloadLength),
        {}};
    rest = rest.subspan(payloadLength);
    while (!rest.empty()) {
        const auto element = takeElement(rest);
        if (!element) {
            return std::nullopt;
        }
        message.elements.push_back(*element);
    }
    return message;
}

}  // namespace host

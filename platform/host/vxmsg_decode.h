// Reads the event messages that mediacheckd/platform/vxmsg.h builds; for tools.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/host/vxmsg_layout.h"

namespace host {

struct VxmsgElement {
    uint8_t tag;
    VxmsgElementKind kind;
    std::span<const unsigned char> value;
};

// A decoded message. The spans lie in the bytes that were decoded.
struct VxmsgMessage {
    std::string type;
    uint32_t id;
    std::span<const unsigned char> payload;
    std::vector<VxmsgElement> elements;
};

// Decodes one whole message; nothing outside bytes is read.
// Returns none when bytes is not exactly one message: cut short, too long, an element that does
// not end inside it, an element kind that is unknown.
[[nodiscard]] std::optional<VxmsgMessage> decodeVxmsg(std::span<const unsigned char> bytes);

}  // namespace host

// The event builder. Its encoding is the platform's own affair; what the system relies on is that
// the bytes are those of the message, as long as it says, and the same each time.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "tools/platform_check/check.h"
#include <mediacheckd/platform/vxmsg.h>

namespace {

constexpr char kName[] = "/to_wom";
constexpr uint32_t kNameLength = sizeof kName - 1;
constexpr unsigned char kFill = 0xA5;

std::string hex(const std::string& bytes) {
    std::string digits;
    for (const char byte : bytes) {
        char two[3];
        std::snprintf(two, sizeof two, "%02x", static_cast<unsigned char>(byte));
        digits += two;
    }
    return digits;
}

struct Built {
    Guarded<vxmsg_builder> guarded;
    int result;

    // fill: the bytes that lie there before.
    Built(uint32_t capacity, int32_t code, unsigned char fill = 0) {
        vxmsg_builder& builder = guarded.record;
        std::memset(builder.data, fill, sizeof builder.data);
        builder.capacity = capacity;
        result = vxmsg_build(&builder, "EV", &code, sizeof code, 24);
        add('D', kNameLength, kName);
        add('C', kNameLength, kName);
        builder.length += sntlv_add_dat(builder.data, capacity, 0xEE, 0, nullptr);
    }

    void add(uint8_t tag, uint32_t length, const void* value) {
        vxmsg_builder& builder = guarded.record;
        builder.length += sntlv_add_bin(builder.data, builder.capacity, tag, length, value);
    }

    [[nodiscard]] std::string bytes() const {
        const auto* const data = reinterpret_cast<const char*>(guarded.record.data);
        return {data, std::min<uint32_t>(guarded.record.length, VXMSG_DATA_SIZE)};
    }
};

constexpr int32_t kCode = 0x12345678;

Outcome buildsTheEvent() {
    const Built event(VXMSG_DATA_SIZE, kCode);
    if (event.result != 0) {
        return {false, returned("vxmsg_build", event.result)};
    }
    const std::string bytes = event.bytes();
    const std::string code(reinterpret_cast<const char*>(&kCode), sizeof kCode);
    if (bytes.find(code) == std::string::npos) {
        return {false, "the payload is not in the message"};
    }
    const size_t first = bytes.find(kName);
    const bool twice =
        first != std::string::npos && bytes.find(kName, first + 1) != std::string::npos;
    return {twice, twice ? hex(bytes) : "the two elements are not in the message"};
}

Outcome buildsTheSameAgain() {
    const bool same =
        Built(VXMSG_DATA_SIZE, kCode).bytes() == Built(VXMSG_DATA_SIZE, kCode, kFill).bytes();
    return {same, same ? "" : "they differ where other bytes lay before"};
}

Outcome tellsCodesApart() {
    const bool differ = Built(VXMSG_DATA_SIZE, 23).bytes() != Built(VXMSG_DATA_SIZE, 24).bytes();
    return {differ, differ ? "" : "the codes 23 and 24 give the same"};
}

Outcome keepsToTheCapacity() {
    const uint32_t whole = Built(VXMSG_DATA_SIZE, kCode).guarded.record.length;
    const uint32_t most = std::min<uint32_t>(whole, VXMSG_DATA_SIZE);
    for (uint32_t capacity = 0; capacity <= most; ++capacity) {
        const Built event(capacity, kCode, kFill);
        const auto& data = event.guarded.record.data;
        if (event.guarded.record.length > capacity ||
            !std::all_of(data + capacity, std::end(data),
                         [](unsigned char byte) { return byte == kFill; })) {
            return {false, "a capacity of " + std::to_string(capacity) + " was passed"};
        }
    }
    return {true, "0 to " + std::to_string(most) + " bytes"};
}

Outcome refusesWhatDoesNotFit() {
    Built event(VXMSG_DATA_SIZE, kCode);
    const uint32_t before = event.guarded.record.length;
    const std::string large(VXMSG_DATA_SIZE, 'x');
    event.add('L', VXMSG_DATA_SIZE, large.data());
    if (!event.guarded.intact()) {
        return {false, "bytes beside the message were written"};
    }
    const uint32_t added = event.guarded.record.length - before;
    return {added == 0, std::to_string(added) + " bytes"};
}

constexpr Check kChecks[] = {
    {"vxmsg_build, sntlv_add_bin, sntlv_add_dat: the event is built", buildsTheEvent},
    {"vxmsg_build: the same content gives the same bytes", buildsTheSameAgain},
    {"vxmsg_build: another payload gives other bytes", tellsCodesApart},
    {"vxmsg_build, sntlv_add_bin: the capacity is kept", keepsToTheCapacity},
    {"sntlv_add_bin: an element that does not fit adds nothing", refusesWhatDoesNotFit},
};

}  // namespace

std::span<const Check> builderChecks() {
    return kChecks;
}

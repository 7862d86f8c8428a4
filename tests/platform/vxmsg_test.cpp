#include <mediacheckd/platform/vxmsg.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <span>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

// The daemon's event; docs/event-message.md explains these bytes.
const Bytes kEvent = {
    'E',  'V', 40, 0, 24,  0,   0,   0,   4,   0,         // header
    24,   0,   0,  0,                                     // payload: the event code
    0x44, 1,   7,  0, '/', 't', 'o', '_', 'w', 'o', 'm',  // element 'D'
    0x43, 1,   7,  0, '/', 't', 'o', '_', 'w', 'o', 'm',  // element 'C'
    0xEE, 2,   0,  0,                                     // closing element
};

vxmsg_builder build(uint32_t capacity) {
    vxmsg_builder builder{};
    std::fill(std::begin(builder.data), std::end(builder.data), 0xAA);
    builder.capacity = capacity;
    const unsigned char code[] = {24, 0, 0, 0};
    if (vxmsg_build(&builder, "EV", code, sizeof(code), 24) != 0) {
        return builder;
    }
    builder.length += sntlv_add_bin(builder.data, capacity, 0x44, 7, "/to_wom");
    builder.length += sntlv_add_bin(builder.data, capacity, 0x43, 7, "/to_wom");
    builder.length += sntlv_add_dat(builder.data, capacity, 0xEE, 0, nullptr);
    return builder;
}

TEST(Vxmsg, theEventIsTheseBytesAsFarAsTheyFit) {
    for (uint32_t capacity = 0; capacity <= kEvent.size(); ++capacity) {
        const vxmsg_builder event = build(capacity);
        uint32_t expected = capacity < 14 ? 0 : 14;
        for (const uint32_t element : {11u, 11u, 4u}) {
            expected += expected > 0 && expected + element <= capacity ? element : 0;
        }
        EXPECT_EQ(event.length, expected) << capacity;
        EXPECT_THAT(std::span(event.data).subspan(expected), testing::Each(0xAA)) << capacity;
    }
    const vxmsg_builder event = build(VXMSG_DATA_SIZE);
    EXPECT_EQ(Bytes(event.data, event.data + event.length), kEvent);
}

TEST(Vxmsg, noLengthOverflows) {
    vxmsg_builder builder = build(UINT32_MAX);
    ASSERT_EQ(builder.length, 40u);
    for (const uint32_t length : {1491u, 0xFFFFu, 0x7FFFFFFFu, 0xFFFFFFF6u, 0xFFFFFFFFu}) {
        EXPECT_EQ(sntlv_add_bin(builder.data, VXMSG_DATA_SIZE, 1, length, "x"), 0u) << length;
        vxmsg_builder fresh{.capacity = UINT32_MAX, .length = 1, .data = {}};
        EXPECT_LT(vxmsg_build(&fresh, "EV", "x", length, 24), 0) << length;
        EXPECT_EQ(fresh.length, 0u);
    }
    EXPECT_EQ(sntlv_add_bin(builder.data, UINT32_MAX, 1, 0xFFFF, "x"), 0u);
    Bytes damaged(VXMSG_DATA_SIZE, 0xFF);
    EXPECT_EQ(sntlv_add_dat(damaged.data(), VXMSG_DATA_SIZE, 1, 0, nullptr), 0u);
}

}  // namespace

// Any bytes that come over the host's channels, to each service, and any event message. The input
// is a row of requests: a byte with the length of one, then its bytes.
#include <cstring>

#include "platform/host/settings_service.h"
#include "simulator/answers/answer.h"
#include "simulator/card/card.h"
#include "tests/simulator/sample_card.h"
#include <mediacheckd/platform/vxipc.h>
#include <mediacheckd/platform/vxmsg.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const simulator::Database card = simulator::loadCard(sampleCard());
    simulator::Database database = card;
    for (size_t length = 0; size > 0; data += length, size -= length) {
        length = std::min<size_t>(*data++, --size);
        const std::vector<std::byte> request(reinterpret_cast<const std::byte*>(data),
                                             reinterpret_cast<const std::byte*>(data) + length);
        for (const simulator::Message& message : answer(database, request)) {
            if (message.size() > VX_IPC_MESSAGE_MAX) {
                std::abort();
            }
        }
        (void)host::answerSettingRequest({{20, 1}}, request);

        std::vector<unsigned char> event(VXMSG_DATA_SIZE);
        std::memcpy(event.data(), data, length);
        const auto capacity = static_cast<uint32_t>(event.size());
        (void)sntlv_add_bin(event.data(), capacity, 1, static_cast<uint32_t>(length), data);
        vxmsg_builder builder{};
        builder.capacity = capacity;
        (void)vxmsg_build(&builder, "EV", data, static_cast<uint32_t>(length), 24);
        if (builder.length > capacity) {
            std::abort();
        }
    }
    return 0;
}

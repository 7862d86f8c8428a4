#include <mediacheckd/platform/csi.h>

#include <gmock/gmock.h>

#include "platform/host/settings_service.h"
#include "tests/support/channel_thread.h"

namespace {

TEST(Csi, givesTheServicesNumberOrAnErrorCode) {
    uint32_t length = 0;
    uint32_t value = 0;
    EXPECT_EQ(csi_get(CSI_MODEL_NUMBER, 4, &length, &value), host::kCsiNoService);

    const ChannelThread server(host::kSettingsChannel, [](std::span<const std::byte> request) {
        auto reply = host::answerSettingRequest({{CSI_MODEL_NUMBER, 0x133}, {1, 1}}, request);
        reply.resize(request[0] == std::byte{1} ? 2 : reply.size());
        return host::Reply{.messages = {reply}};
    });
    EXPECT_EQ(csi_get(CSI_MODEL_NUMBER, 4, &length, &value), 0);
    EXPECT_TRUE(length == 4 && value == 0x133);
    EXPECT_EQ(csi_get(CSI_MODEL_NUMBER, 3, &length, &value), host::kCsiNoRoom);
    EXPECT_EQ(csi_get(99, 4, &length, &value), host::kCsiUnknownKey);
    EXPECT_EQ(csi_get(1, 4, &length, &value), host::kCsiNoService) << "short reply";
    EXPECT_EQ(csi_get(CSI_MODEL_NUMBER, 4, nullptr, &value), host::kCsiBadArgument);
    EXPECT_EQ(csi_get(CSI_MODEL_NUMBER, 4, &length, nullptr), host::kCsiBadArgument);
    EXPECT_EQ(host::answerSettingRequest({}, {}).size(), 4u) << "a request that is no key";
}

}  // namespace

#include <mediacheckd/platform/csi.h>

#include <endian.h>

#include <cstring>

#include "platform/host/settings_service.h"
#include <mediacheckd/platform/vxipc.h>

namespace {

// Asks for one setting. Returns the length of the reply or a negative number.
int exchange(uint32_t key, unsigned char (&reply)[VX_IPC_MESSAGE_MAX]) noexcept {
    vxIpcEndpoint endpoint{};
    if (const int result = vxIpcInit(host::kSettingsChannel, &endpoint); result < 0) {
        return result;
    }
    const uint32_t request = htole32(key);
    const int sent = vxIpcSend(&endpoint, &request, sizeof(request));
    const int received = sent < 0 ? sent : vxIpcReceive(&endpoint, reply, sizeof(reply));
    vxIpcDestroy(&endpoint);
    return received;
}

}  // namespace

extern "C" int csi_get(int key, uint32_t bufferSize, uint32_t* lengthOut, void* buffer) {
    if (lengthOut == nullptr || (buffer == nullptr && bufferSize > 0)) {
        return host::kCsiBadArgument;
    }
    unsigned char reply[VX_IPC_MESSAGE_MAX];
    uint32_t result = 0;
    const int received = exchange(static_cast<uint32_t>(key), reply);
    if (received < static_cast<int>(sizeof(result))) {
        return host::kCsiNoService;
    }
    std::memcpy(&result, reply, sizeof(result));
    if (result != 0) {
        return static_cast<int>(le32toh(result));
    }
    const auto length = static_cast<uint32_t>(received) - static_cast<uint32_t>(sizeof(result));
    if (length > bufferSize) {
        return host::kCsiNoRoom;
    }
    if (length > 0) {
        std::memcpy(buffer, reply + sizeof(result), length);
    }
    *lengthOut = length;
    return 0;
}

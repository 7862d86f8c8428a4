#include "platform/host/channel_address.h"

#include <sys/socket.h>

#include <cstring>

namespace host {

std::optional<sockaddr_un> channelAddress(std::string_view channel) noexcept {
    if (channel.empty() || channel.size() > kChannelNameMax ||
        channel.find_first_of(std::string_view("/\0", 2)) != std::string_view::npos) {
        return std::nullopt;
    }
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    constexpr std::size_t folderLength = sizeof(kChannelFolder) - 1;
    std::memcpy(address.sun_path, kChannelFolder, folderLength);
    address.sun_path[folderLength] = '/';
    std::memcpy(address.sun_path + folderLength + 1, channel.data(), channel.size());
    return address;
}

}  // namespace host

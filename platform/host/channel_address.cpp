#include "platform/host/channel_address.h"

#include <sys/socket.h>

#include <cstdlib>

namespace host {

const char* channelFolder() noexcept {
    const char* const named = secure_getenv(kChannelFolderVariable);
    return named != nullptr && *named != '\0' ? named : kChannelFolder;
}

std::optional<sockaddr_un> channelAddress(std::string_view channel) noexcept {
    const std::string_view folder = channelFolder();
    sockaddr_un address{};
    if (channel.empty() || channel.size() > kChannelNameMax ||
        folder.size() + channel.size() + 2 > sizeof(address.sun_path) ||
        channel.find_first_of(std::string_view("/\0", 2)) != std::string_view::npos) {
        return std::nullopt;
    }
    address.sun_family = AF_UNIX;
    folder.copy(address.sun_path, folder.size());
    address.sun_path[folder.size()] = '/';
    channel.copy(address.sun_path + folder.size() + 1, channel.size());
    return address;
}

}  // namespace host

// Where the channels of the host live: one socket a channel, found by its name below one folder.
#pragma once

#include <sys/un.h>

#include <optional>
#include <string_view>

namespace host {

// Names another folder than kChannelFolder. A process that runs with more rights than its caller
// has passes over it.
inline constexpr char kChannelFolderVariable[] = "VXIPC_FOLDER";
inline constexpr char kChannelFolder[] = "/tmp/vxipc";

// The longest channel name: folder, slash, name and a terminating zero fill a socket address.
inline constexpr std::size_t kChannelNameMax =
    sizeof(sockaddr_un::sun_path) - sizeof(kChannelFolder) - 1;

// The folder of the channels, of this process and its environment as it is now.
[[nodiscard]] const char* channelFolder() noexcept;

// The address of the channel's socket; none when the name is empty, too long or holds a slash, or
// the folder's name leaves it no room.
[[nodiscard]] std::optional<sockaddr_un> channelAddress(std::string_view channel) noexcept;

}  // namespace host

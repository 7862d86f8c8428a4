// Where the channels of the host live: one socket a channel, found by its name below one folder.
#pragma once

#include <sys/un.h>

#include <optional>
#include <string_view>

namespace host {

inline constexpr char kChannelFolder[] = "/tmp/vxipc";

// The longest channel name: folder, slash, name and a terminating zero fill a socket address.
inline constexpr std::size_t kChannelNameMax =
    sizeof(sockaddr_un::sun_path) - sizeof(kChannelFolder) - 1;

// The address of the channel's socket; none when the name is empty, too long or holds a slash.
[[nodiscard]] std::optional<sockaddr_un> channelAddress(std::string_view channel) noexcept;

}  // namespace host

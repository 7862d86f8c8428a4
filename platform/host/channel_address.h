// Where the channels of the host live: one socket a channel, found by its name below one folder.
#pragma once

#include <sys/stat.h>
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

// Whether path is itself (not through a symbolic link) of the given kind (S_IFDIR, S_IFSOCK),
// belongs to root or to the caller and is writable for nobody else.
// Returns 0, or a negative errno: -EACCES when it is there but not to be trusted.
[[nodiscard]] int checkTrusted(const char* path, mode_t kind) noexcept;

}  // namespace host

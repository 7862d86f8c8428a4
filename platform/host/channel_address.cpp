#include "platform/host/channel_address.h"

#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
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

int checkTrusted(const char* path, mode_t kind) noexcept {
    struct stat status {};
    if (lstat(path, &status) != 0) {
        return -errno;
    }
    const bool ownerTrusted = status.st_uid == 0 || status.st_uid == geteuid();
    const bool othersMayWrite = (status.st_mode & (S_IWGRP | S_IWOTH)) != 0;
    return (status.st_mode & S_IFMT) == kind && ownerTrusted && !othersMayWrite ? 0 : -EACCES;
}

}  // namespace host

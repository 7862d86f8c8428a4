// The settings service on the host: csi_get asks it over the channel "csi_settings".
//
// Numbers are little-endian. A request is the setting's key (u32). A reply is a result (u32, 0 for
// success) and, after success only, the setting's value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <vector>

namespace host {

inline constexpr char kSettingsChannel[] = "csi_settings";

// Error codes of csi_get.
enum CsiError : int {
    kCsiNoService = 1,    // nobody serves the channel, or no sound answer came
    kCsiUnknownKey = 2,   // the service has no such setting
    kCsiNoRoom = 3,       // the value is longer than the caller's buffer
    kCsiBadArgument = 4,  // an output is missing
};

// The settings that one service offers: numbers by key.
using Settings = std::map<uint32_t, uint32_t>;

// The serving side: the reply to one request.
[[nodiscard]] std::vector<std::byte> answerSettingRequest(const Settings& settings,
                                                          std::span<const std::byte> request);

}  // namespace host

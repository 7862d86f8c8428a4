// The settings service and the debug word.
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "tools/platform_check/check.h"
#include <mediacheckd/platform/csi.h>
#include <mediacheckd/platform/debug_level.h>

namespace {

// As large as the system's own buffer.
constexpr uint32_t kSettingSize = 1400;

struct Setting {
    Guarded<std::array<unsigned char, kSettingSize>> value;
    Guarded<uint32_t> length;

    int get(int key, uint32_t size) {
        return csi_get(key, size, &length.record, value.record.data());
    }
};

// Without an answer the system takes the camera for model 30: an error is no broken promise.
Outcome givesModelNumber() {
    Setting setting;
    const int result = setting.get(CSI_MODEL_NUMBER, kSettingSize);
    if (!setting.value.intact() || !setting.length.intact()) {
        return {false, "bytes beside the outputs were written"};
    }
    if (result != 0) {
        return {true, "error " + std::to_string(result) + ", which makes it model 30"};
    }
    uint32_t model = 0;
    std::memcpy(&model, setting.value.record.data(), sizeof model);
    const uint32_t length = setting.length.record;
    return {length >= sizeof model && length <= kSettingSize,
            std::to_string(length) + " bytes, model " + std::to_string(model & 0xFF)};
}

Outcome keepsToTheBuffer() {
    Setting setting;
    const int result = setting.get(CSI_MODEL_NUMBER, 1);
    const auto behind = std::span(setting.value.record).subspan(1);
    if (!std::ranges::all_of(behind, [](unsigned char byte) { return byte == 0; })) {
        return {false, "bytes behind a buffer of 1 byte were written"};
    }
    return {result != 0 || setting.length.record <= 1, returned("csi_get", result)};
}

Outcome refusesUnknownKey() {
    const int result = Setting().get(-1, kSettingSize);
    return {result != 0, returned("csi_get", result)};
}

Outcome canBeRead() {
    return {true, std::to_string(g_debug_level)};
}

constexpr Check kChecks[] = {
    {"csi_get: the value begins with the model number, or there is an error", givesModelNumber},
    {"csi_get: a buffer that is too small is not passed", keepsToTheBuffer},
    {"csi_get: an unknown key is an error", refusesUnknownKey},
    {"g_debug_level: can be read", canBeRead},
};

}  // namespace

std::span<const Check> settingsChecks() {
    return kChecks;
}

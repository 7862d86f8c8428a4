// The settings service and the debug word.
#include <cstdint>

#include "tools/platform_check/check.h"
#include <mediacheckd/platform/csi.h>
#include <mediacheckd/platform/debug_level.h>

namespace {

struct Setting {
    Guarded<uint32_t> value;
    Guarded<uint32_t> length;

    int get(int key, uint32_t size) { return csi_get(key, size, &length.record, &value.record); }
};

// Without an answer the system takes the camera for model 30: an error is no broken promise.
Outcome givesModelNumber() {
    Setting model;
    const int result = model.get(CSI_MODEL_NUMBER, sizeof(uint32_t));
    if (!model.value.intact() || !model.length.intact()) {
        return "bytes beside the outputs were written";
    }
    const bool sound = result != 0 || model.length.record == sizeof(uint32_t);
    return sound ? "" : saw("the length is no u32's; csi_get", result);
}

Outcome keepsToTheBuffer() {
    Setting model;
    const int result = model.get(CSI_MODEL_NUMBER, 1);
    const bool told = result != 0 || model.length.record != sizeof(uint32_t);
    return told && model.value.record <= 0xFF ? "" : saw("with a buffer of 1 byte csi_get", result);
}

Outcome refusesUnknownKey() {
    const int result = Setting().get(-1, sizeof(uint32_t));
    return result != 0 ? "" : saw("csi_get", result);
}

Outcome canBeRead() {
    const uint32_t word = *static_cast<volatile uint32_t*>(&g_debug_level);
    return word == g_debug_level ? "" : "the word changes while it is read";
}

constexpr Check kChecks[] = {
    {"csi_get: the model number is a u32, or an error", givesModelNumber},
    {"csi_get: a buffer that is too small is not passed", keepsToTheBuffer},
    {"csi_get: an unknown key is an error", refusesUnknownKey},
    {"g_debug_level: can be read", canBeRead},
};

}  // namespace

std::span<const Check> settingsChecks() {
    return kChecks;
}

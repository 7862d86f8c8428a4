// model: the camera model and what depends on it.
#include <mediacheckd/vxMediaRTOSDB/model_number.h>

#include <array>

#include "tools/mediactl/command_line.h"
#include "tools/mediactl/model_number.h"
#include "tools/mediactl/output.h"
#include <mediacheckd/platform/csi.h>

namespace mediactl {

namespace {

constexpr uint32_t kSettingSize = 1400;

int model() {
    const auto number = modelNumber();
    if (!number) {
        return fail(noModelNumber());
    }
    printResult({{"model", *number}, {"one_based_chapters", usesOneBasedChapters() != 0}});
    return kDone;
}

}  // namespace

std::optional<uint32_t> modelNumber() {
    std::array<uint8_t, kSettingSize> value = {};
    uint32_t length = 0;
    if (csi_get(CSI_MODEL_NUMBER, kSettingSize, &length, value.data()) != 0 || length == 0) {
        return std::nullopt;
    }
    return value[0];
}

Failure noModelNumber() {
    return {"no_model", "the settings service tells no model number, and the library takes 30",
            "start the service, on a PC mediadb-sim CARD"};
}

void addModelCommands(CommandLine& line) {
    line.add("model", "Print the camera's model number", model);
}

}  // namespace mediactl

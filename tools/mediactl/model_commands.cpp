// model: the camera model and what depends on it.
#include <mediacheckd/vxMediaRTOSDB/model_number.h>

#include "tools/mediactl/command_line.h"
#include "tools/mediactl/output.h"

namespace mediactl {

void addModelCommands(CommandLine& line) {
    line.add("model", "Print the camera's model number", [] {
        printResult(
            {{"model", csiGetModelNumber()}, {"one_based_chapters", usesOneBasedChapters() != 0}});
        return kDone;
    });
}

}  // namespace mediactl

// mediactl: asks the camera's media database from a shell.
#include <syslog.h>

#include <cstdio>
#include <exception>

#include "tools/mediactl/command_line.h"
#include "tools/mediactl/interruption.h"
#include "tools/mediactl/progress.h"

namespace {

int run(int argc, char** argv) {
    using namespace mediactl;

    openlog("mediactl", LOG_PERROR, LOG_USER);
    noteInterruptions();
    CommandLine line;
    addDoctorCommand(line);
    addEventCommands(line);
    addHistogramCommands(line);
    addItemCommands(line);
    addFileCommands(line);
    addScanCommands(line);
    addMediaListCommands(line);
    addModelCommands(line);
    addResponseCommands(line);
    addSimulatorCommand(line);
    const int status = line.run(argc, argv);
    hideProgress();
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
        std::fprintf(stderr, "mediactl: the output cannot be written: %m\n");
        return kFailed;
    }
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        return mediactl::fail("%s", error.what());
    }
}

#include <mediacheckd/vcore/daemon_init.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "vcore/base/standard_output.h"

namespace {

constexpr char kCoreDirectory[] = "/tmp/fuse_b/";

// Returns the result of entering their directory.
int allowCoreFiles() {
    const rlimit unlimited{RLIM_INFINITY, RLIM_INFINITY};
    if (setrlimit(RLIMIT_CORE, &unlimited) != 0) {
        fputs("daemon_init_ext: Error: unable to set core limit in order to generate core dump!",
              stdout);
    }
    const int entered = chdir(kCoreDirectory);
    fputs("daemon_init_ext: Note: Daemon can generate core dump.", stdout);
    return entered;
}

}  // namespace

int daemon_init_ext(int allowCoreDump) {
    if (getppid() == 1) {
        return 0;
    }
    // What stdio holds would be written by the parent, which ends, and by the daemon once more.
    vcore::flushStandardOutput();
    const pid_t child = fork();
    if (child < 0) {
        return -1;
    }
    if (child > 0) {
        exit(0);
    }
    setsid();
    const int entered = allowCoreDump != 0 ? allowCoreFiles() : chdir("/");
    umask(0);
    return entered;
}

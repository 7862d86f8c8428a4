#include <mediacheckd/vcore/daemon_init.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr char kCoreDirectory[] = "/tmp/fuse_b/";

// Returns the result of entering their directory.
int allowCoreFiles() {
    const rlimit unlimited{RLIM_INFINITY, RLIM_INFINITY};
    if (setrlimit(RLIMIT_CORE, &unlimited) != 0) {
        printf("%s: Error: unable to set core limit in order to generate core dump!",
               "daemon_init_ext");
    }
    const int entered = chdir(kCoreDirectory);
    printf("%s: Note: Daemon can generate core dump.", "daemon_init_ext");
    return entered;
}

}  // namespace

int daemon_init_ext(int allowCoreDump) {
    if (getppid() == 1) {
        return 0;
    }
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

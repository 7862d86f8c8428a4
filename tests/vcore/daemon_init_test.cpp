#include <mediacheckd/vcore/daemon_init.h>

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>

namespace {

// Calls daemon_init_ext as it is in a child of the test, and tells what the process is afterwards.
std::string callHere(int allowCoreDump) {
    umask(022);
    const rlimit none{0, RLIM_INFINITY};
    setrlimit(RLIMIT_CORE, &none);
    const pid_t before = getpid();
    printf("said once, ");
    const int result = daemon_init_ext(allowCoreDump);
    rlimit cores{};
    getrlimit(RLIMIT_CORE, &cores);
    return std::to_string(result) + (getpid() != before ? " forked" : "") +
           (getsid(0) == getpid() ? " leads its session" : "") +
           (umask(0) == 0 ? " without mask" : "") +
           (cores.rlim_cur == RLIM_INFINITY ? " with cores" : "") + " in " +
           std::filesystem::current_path().string();
}

void becomeChildOfProcessOne() {
    if (unshare(CLONE_NEWPID) != 0) {
        _exit(1);
    }
    while (getppid() != 1) {
        if (const pid_t child = fork(); child != 0) {
            waitpid(child, nullptr, 0);
            _exit(0);
        }
    }
}

// Returns what callHere tells and what it leaves on standard output.
std::string callInChild(
    int allowCoreDump, void (*prepare)() = [] {}) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    testing::internal::CaptureStdout();
    const pid_t child = fork();
    if (child == 0) {
        std::filesystem::current_path("/tmp");
        prepare();
        printf("%s", callHere(allowCoreDump).c_str());
        fflush(stdout);
        _exit(0);
    }
    close(ends[1]);
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << "the caller's process ends with success";
    char none = 0;
    EXPECT_EQ(read(ends[0], &none, 1), 0) << "ends when the daemon does";
    close(ends[0]);
    return testing::internal::GetCapturedStdout();
}

TEST(DaemonInit, DetachesOnceAndSaysWhereCoreFilesGo) {
    const std::string detached = " forked leads its session without mask";
    const std::string said = "said once, ";
    const std::string note = said + "daemon_init_ext: Note: Daemon can generate core dump.";
    EXPECT_EQ(callInChild(0), said + "0" + detached + " in /");
    EXPECT_EQ(callInChild(1), note + "-1" + detached + " with cores in /tmp");
    std::filesystem::create_directory("/tmp/fuse_b");
    EXPECT_EQ(callInChild(1), note + "0" + detached + " with cores in /tmp/fuse_b");
    EXPECT_EQ(callInChild(1, becomeChildOfProcessOne), said + "0 in /tmp");
    const auto forbidCores = [] {
        const rlimit none{};
        setrlimit(RLIMIT_CORE, &none);
        EXPECT_EQ(setresuid(1, 1, 1), 0);
    };
    EXPECT_EQ(
        callInChild(1, forbidCores),
        said + "daemon_init_ext: Error: unable to set core limit in order to generate core dump!" +
            note.substr(said.size()) + "0" + detached + " in /tmp/fuse_b");
}

}  // namespace

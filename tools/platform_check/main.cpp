// mediacheckd-platform-check: tells call by call whether the platform does what the system relies
// on.
#include <getopt.h>
#include <sys/uio.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tools/platform_check/check.h"
#include <mediacheckd/vxMediaRTOSDB/db_requests.h>

namespace {

constexpr int kExitBroken = 1;
constexpr int kExitWrongCall = 2;

constexpr char kHelp[] =
    "usage: mediacheckd-platform-check [--scan DIRECTORY] [--peer-goes-away]\n"
    "\n"
    "Tells call by call whether the platform does what mediacheckd relies on. The media database\n"
    "has to be there.\n"
    "\n"
    "  --scan DIRECTORY  also ask for the files of a directory, such as 100VXCAM: with more than "
    "74\n"
    "                    of them, the answer comes in several messages\n"
    "  --peer-goes-away  also exchange messages until the database ends, which must be noticed\n"
    "  --help            print this\n"
    "  --version         print the version\n"
    "\n"
    "The exit status is 0 when every promise is kept, 1 when one is broken, 2 for a wrong call.\n";

// What is being checked, for the report that a call does not return.
const char* g_promise = "";

void reportHang(int /*signal*/) {
    const iovec line[] = {{const_cast<char*>("FAILED  "), 8},
                          {const_cast<char*>(g_promise), std::strlen(g_promise)},
                          {const_cast<char*>(": a call does not return\n"), 25}};
    _exit(writev(STDOUT_FILENO, line, 3) < 0 ? kExitWrongCall : kExitBroken);
}

template <typename Run>
bool isKept(const char* promise, Run run) {
    g_promise = promise;
    startPatienceAnew();
    const Outcome outcome = run();
    alarm(0);
    std::printf("%s%s%s%s\n", outcome.kept ? "ok      " : "FAILED  ", promise,
                outcome.seen.empty() ? "" : ": ", outcome.seen.c_str());
    std::fflush(stdout);
    return outcome.kept;
}

int checkAll(const char* directory, bool peerGoesAway) {
    int broken = 0;
    for (const auto& checks : {channelChecks(), settingsChecks(), builderChecks()}) {
        for (const Check& check : checks) {
            broken += isKept(check.promise, check.run) ? 0 : 1;
        }
    }
    if (directory != nullptr) {
        const auto scan = [directory] { return receivesMessageByMessage(directory); };
        broken += isKept("vxIpcReceive: the messages of one answer come one by one", scan) ? 0 : 1;
    }
    if (peerGoesAway) {
        std::puts("...     end the media database now");
        std::fflush(stdout);
        broken +=
            isKept("vxIpcReceive: a peer that goes away gives a negative number", noticesLostPeer)
                ? 0
                : 1;
    }
    return broken == 0 ? EXIT_SUCCESS : kExitBroken;
}

}  // namespace

void startPatienceAnew() {
    alarm(kPatienceSeconds);
}

int main(int argc, char** argv) {
    enum : int { kScan = 's', kPeerGoesAway = 'p', kVersion = 'v', kHelpWanted = 'h' };
    constexpr option kOptions[] = {{"scan", required_argument, nullptr, kScan},
                                   {"peer-goes-away", no_argument, nullptr, kPeerGoesAway},
                                   {"version", no_argument, nullptr, kVersion},
                                   {"help", no_argument, nullptr, kHelpWanted},
                                   {}};
    const char* directory = nullptr;
    bool peerGoesAway = false;
    bool wrong = false;
    for (int found = 0; (found = getopt_long(argc, argv, "", kOptions, nullptr)) != -1;) {
        switch (found) {
            case kScan:
                directory = optarg;
                wrong = wrong || std::strlen(directory) != kDirNameSize;
                break;
            case kPeerGoesAway:
                peerGoesAway = true;
                break;
            case kVersion:
                std::puts("mediacheckd-platform-check " MEDIACHECKD_VERSION);
                return EXIT_SUCCESS;
            case kHelpWanted:
                std::fputs(kHelp, stdout);
                return EXIT_SUCCESS;
            default:
                wrong = true;
        }
    }
    if (wrong || optind < argc) {
        std::fputs(kHelp, stderr);
        return kExitWrongCall;
    }
    std::signal(SIGALRM, reportHang);
    return checkAll(directory, peerGoesAway);
}

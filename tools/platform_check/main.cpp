// mediacheckd-platform-check: tells call by call whether the platform does what the system relies
// on.
#include <cstdio>
#include <cstring>

#include "tools/platform_check/check.h"

namespace {

constexpr int kExitBroken = 1;
constexpr int kExitWrongCall = 2;

constexpr char kHelp[] =
    "usage: mediacheckd-platform-check [--peer-goes-away]\n"
    "\n"
    "Tells call by call whether the platform does what mediacheckd relies on. The media database\n"
    "has to be there.\n"
    "\n"
    "  --peer-goes-away  also exchange messages until the database ends, which must be noticed\n"
    "  --help            print this\n"
    "  --version         print the version\n"
    "\n"
    "The exit status is 0 when every promise is kept, 1 when one is broken.\n";

bool isKept(const Check& check) {
    const Outcome seen = check.run();
    if (seen.empty()) {
        std::printf("ok      %s\n", check.promise);
    } else {
        std::printf("FAILED  %s: %s\n", check.promise, seen.c_str());
    }
    std::fflush(stdout);
    return seen.empty();
}

int checkAll(bool peerGoesAway) {
    int broken = 0;
    for (const auto& checks : {channelChecks(), settingsChecks(), builderChecks()}) {
        for (const Check& check : checks) {
            broken += isKept(check) ? 0 : 1;
        }
    }
    if (peerGoesAway) {
        std::fputs("...     end the media database now\n", stdout);
        std::fflush(stdout);
        broken += isKept(kPeerGoneCheck) ? 0 : 1;
    }
    return broken == 0 ? 0 : kExitBroken;
}

}  // namespace

int main(int argc, char** argv) {
    const char* const option = argc == 2 ? argv[1] : "";
    if (std::strcmp(option, "--help") == 0) {
        std::fputs(kHelp, stdout);
        return 0;
    }
    if (std::strcmp(option, "--version") == 0) {
        std::puts("mediacheckd-platform-check " MEDIACHECKD_VERSION);
        return 0;
    }
    const bool peerGoesAway = std::strcmp(option, "--peer-goes-away") == 0;
    if (argc > 1 && !peerGoesAway) {
        std::fputs(kHelp, stderr);
        return kExitWrongCall;
    }
    return checkAll(peerGoesAway);
}

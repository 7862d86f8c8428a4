// Runs a program once for each call that it makes and each error that the call may give, and judges
// what became of it: the documented result, whole, or a failure that is told; and the next run is
// right.
//
// usage: every_fault BUILD-FOLDER SCENARIO
#include <regex.h>
#include <sys/mman.h>
#include <sys/wait.h>

#include <fcntl.h>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "tests/faults/fault_plan.h"

namespace {

// A card, its simulator, and rules and an order for candidates.
constexpr char kCard[] =
    "make-sample-card /tmp/card; mkdir -p /tmp/fuse_d/MISC; printf 12345 > /tmp/fuse_d/MISC/card;"
    "echo '{\"upload_rules\": [{\"status\": 0}, {\"media\": \"any\"}]}' > /tmp/rules;"
    "echo '{\"sort_rules\": [\"media_type\", \"filesize_smallest_first\"],"
    " \"media_type_order\": [\"video\"]}' > /tmp/sort;";
constexpr char kServe[] =
    "mediadb-sim /tmp/card > /tmp/simulator 2>&1 & echo $! > /tmp/server;"
    "until grep -qs serving /tmp/simulator; do :; done;";

// What else than its usual "STATUS OUTPUT" a run may give; behind "|" stands what it complains of.
constexpr char kTells[] = "^([012] [^|]*\\|.*[a-z]|134 .*std::bad_alloc)";
// A response, or the beginning of one that could not be written.
constexpr char kResponds[] =
    "^0 (HTTP/1.1 (200|404|50[03]) \r\n[^\r]*\r\n\r\n([{]\"id\":\"[0-9]+\".*[}]\r\n)?|"
    "HTTP/1.1 200 [^|]*[^\n])?\\|";
// A card that cannot be read gets an identity anew.
constexpr char kTellsOrRenews[] =
    "^([012] [^|]*\\|.*[a-z]|134 .*std::bad_alloc|0 HTTP/1.1 200 [^|]*\"id\":\"[0-9]+\".*[}]\r\n)";
constexpr char kPosts[] =
    "^[01] (.*(24 match|25 error)|(.*h.31.=0 |mq_open.. failed[^\n]*)?\n?mediactl: no "
    "event[^\n]*)\n\\|";

struct Scenario {
    std::string command;          // $FAULTY stands before the program that meets the faults
    const char* from = "socket";  // the calls before this one are another scenario's
    const char* failure = kTells;
};

const std::multimap<std::string, Scenario> kScenarios = {
    {"daemon", {"$FAULTY mediacheckd; mediactl listen --timeout 0 2>&1", "setvbuf", kPosts}},
    {"start", {"$FAULTY mediactl histogram", "openlog"}},
    {"list",
     {"$FAULTY mediactl candidates --log-level 0 --rules /tmp/rules --sort /tmp/sort", "fopen64"}},
    {"queries", {"$FAULTY mediactl items"}},
    {"queries", {"$FAULTY mediactl info 100VXCAM/VHAA0001.MP4"}},
    {"queries", {"$FAULTY mediactl gumi 00112233445566778899aabbccddee02"}},
    {"queries", {"$FAULTY mediactl scan 101VXCAM"}},
    {"queries", {"$FAULTY mediactl set-status 100VXCAM/VXMF0003.MP4 1"}},
    {"queries", {"$FAULTY mediactl model"}},
    {"queries",
     {"mediacheckd > /tmp/dump & $FAULTY mediactl listen --timeout 9; result=$?; kill $!;"
      "mediactl listen --timeout 0 > /tmp/late 2>&1; exit $result",
      "mq_open"}},
    {"responses", {"$FAULTY nph-medialist", "", kResponds}},
    {"responses",
     {"QUERY_STRING='t=v5info&p=100VXCAM/VXMF0003.MP4' $FAULTY nph-metadata", "", kResponds}},
    {"responses",
     {"$FAULTY mediactl paged --gumi --more-info --group-videos", "dup", kTellsOrRenews}},
    {"simulator",
     {"rm -rf /tmp/vxipc /tmp/serving; $FAULTY mediadb-sim /tmp/card > /tmp/serving 2>&1 & "
      "server=$!; until [ -s /tmp/serving -o -S /tmp/vxipc/csi_settings ]; do sleep 0.01; done; "
      "sleep 0.02;"
      "timeout 2 mediactl model 2> /dev/null; kill $server; wait $server",
      "signalfd", "^[01] [^|]*\\|"}},
    {"core",
     {"$FAULTY outside_calls | cat; cat /tmp/fuse_d/MISC/card", "openlog",
      "^0 .*(failed.*identity done\n.*|identity done\n.*[0-9]|identity failed\n.*\n12345)\\|"}},
};

std::string contentOf(const char* path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct Outcome {
    std::string result;      // status and output
    std::string complaints;  // on standard error
};

Outcome run(const std::string& command) {
    std::ofstream("/tmp/fuse_d/MISC/card") << "12345";  // where a fault may have left another
    const int ended = std::system(("( " + command + "\n) > /tmp/out 2> /tmp/err").c_str());
    return {std::to_string(WEXITSTATUS(ended)) + " " + contentOf("/tmp/out"),
            contentOf("/tmp/err")};
}

FaultPlan* sharedPlan() {
    const int file = open(kFaultPlanFile, O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    void* plan = MAP_FAILED;
    if (ftruncate(file, sizeof(FaultPlan)) == 0) {
        plan = mmap(nullptr, sizeof(FaultPlan), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    }
    return plan == MAP_FAILED ? nullptr : static_cast<FaultPlan*>(plan);
}

// Returns whether every run was right.
bool everyFault(const Scenario& scenario, FaultPlan& plan) {
    regex_t failure;
    if (regcomp(&failure, scenario.failure, REG_EXTENDED | REG_NOSUB) != 0) {
        return false;
    }
    const auto planFault = [&](uint32_t at, uint32_t error, bool lasting) {
        std::memset(static_cast<void*>(&plan), 0, sizeof plan);
        std::strncpy(plan.from, scenario.from, sizeof plan.from - 1);
        plan.at = at;
        plan.error = error;
        plan.lasting = lasting;
    };
    planFault(0, 0, false);
    const std::string usual = run(scenario.command).result;
    unsigned points = 0;
    unsigned wrong = 0;
    const auto judge = [&](const Outcome& outcome, bool mayFail) {
        const std::string all = outcome.result + "|" + outcome.complaints;
        ++points;
        // Handling an exception may need memory too.
        const bool exhausted = plan.lasting && all.find("std::bad_alloc") < all.size();
        if (outcome.result != usual && !exhausted &&
            !(mayFail && regexec(&failure, all.c_str(), 0, nullptr, 0) == 0)) {
            ++wrong;
            std::printf("call %u, %s, error %u%s%s: %s\n", plan.at, plan.call, plan.error,
                        plan.lasting ? ", lasting" : "", mayFail ? "" : ", without a fault",
                        all.c_str());
        }
    };
    for (uint32_t at = 1, seen = at; seen >= at; ++at) {
        for (uint32_t error = 0; seen >= at; ++error) {
            planFault(at, error, false);
            const Outcome outcome = run(scenario.command);
            seen = plan.seen;
            judge(outcome, seen >= at && !plan.exhausted);
            if (seen < at || plan.exhausted) {
                break;
            }
            if (error == 0) {
                planFault(at, error, true);
                judge(run(scenario.command), true);
            }
        }
    }
    regfree(&failure);
    std::printf("%u points, %u wrong: %s\n", points, wrong, scenario.command.c_str());
    return wrong == 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        return 2;
    }
    const std::string build = argv[1];
    const auto [first, last] = kScenarios.equal_range(argv[2]);
    std::string path = build + "/../../script:" + getenv("PATH");
    for (const char* folder :
         {"/app:", "/simulator:", "/tools/mediactl:", "/tools/nph:", "/tests/faults:"}) {
        path.insert(0, build + folder);
    }
    setenv("PATH", path.c_str(), 1);
    setenv("FAULTY", ("env LD_PRELOAD=" + build + "/tests/faults/libfaulty_calls.so").c_str(), 1);
    setenv("ASAN_OPTIONS", "verify_asan_link_order=0:exitcode=99", 1);
    FaultPlan* const plan = sharedPlan();
    bool right =
        first != last && plan != nullptr && std::system((std::string(kCard) + kServe).c_str()) == 0;
    for (auto scenario = first; plan != nullptr && scenario != last; ++scenario) {
        right = everyFault(scenario->second, *plan) && right;
    }
    right = std::system("kill $(cat /tmp/server)") == 0 && right;
    return right ? 0 : 1;
}

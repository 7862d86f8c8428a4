// sim: tells mediadb-sim what to do, on its own channel; which words it knows is its own matter.
#include <string>
#include <vector>

#include "tools/mediactl/command_line.h"
#include "tools/mediactl/output.h"
#include <mediacheckd/platform/vxipc.h>

namespace mediactl {

namespace {

constexpr const char* kControlChannel = "mediadb_sim";

class ControlChannel {
  public:
    ControlChannel() : mOpen(vxIpcInit(kControlChannel, &mEndpoint) >= 0) {}
    ~ControlChannel() {
        if (mOpen) {
            vxIpcDestroy(&mEndpoint);
        }
    }
    ControlChannel(const ControlChannel&) = delete;
    ControlChannel& operator=(const ControlChannel&) = delete;

    // The whole reply: its parts begin with '+', the last one with '.'. Nothing when it fails.
    std::optional<std::string> ask(const std::string& request) {
        if (!mOpen || vxIpcSend(&mEndpoint, request.data(), static_cast<int>(request.size())) < 0) {
            return std::nullopt;
        }
        std::string reply;
        char part[VX_IPC_MESSAGE_MAX];
        do {
            const int size = vxIpcReceive(&mEndpoint, part, sizeof part);
            if (size < 1) {
                return std::nullopt;
            }
            reply.append(part + 1, static_cast<size_t>(size) - 1);
        } while (part[0] == '+');
        return reply;
    }

  private:
    vxIpcEndpoint mEndpoint = {};
    bool mOpen;
};

void printFaults(const Json& faults) {
    Listing listing("faults",
                    {{"number", "number", 6}, {"times", "times", 6}, {"fault", "fault", -1}});
    for (const Json& fault : faults) {
        listing.add(fault);
    }
    listing.end(Json::object());
}

int sim(const std::vector<std::string>& words) {
    std::string request;
    for (const std::string& word : words) {
        request += (request.empty() ? "" : " ") + word;
    }
    const auto reply = ControlChannel().ask(request);
    const Json told = Json::parse(reply.value_or(""), nullptr, false);
    if (!told.is_object()) {
        return fail(
            Failure{"no_simulator", "no simulator of this user answers", "start mediadb-sim CARD"});
    }
    if (told.contains("error")) {
        return refuseCall("mediadb-sim: " + told["error"].get<std::string>(),
                          "man mediactl tells what sim takes");
    }
    if (told.contains("faults")) {
        printFaults(told["faults"]);
    } else {
        printResult(told);
    }
    return kDone;
}

}  // namespace

void addSimulatorCommand(CommandLine& line) {
    static std::vector<std::string> words;
    line.add("sim",
             "Tell the simulator what to do: statistics, faults, fault, heal, session, "
             "model-number, status",
             [] { return sim(words); })
        .arguments("WORD", &words, "such as: fault +1:status=5");
}

}  // namespace mediactl

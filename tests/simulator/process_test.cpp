// mediadb-sim as a process.
#include <gmock/gmock.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <filesystem>

#include "libvxMediaRTOSDB/src/db_responses.h"
#include "platform/csi.h"
#include "platform/vxipc.h"
#include "tests/simulator/sample_card.h"

namespace {

using testing::HasSubstr;

struct Ended {
    std::string output;
    int status;
};

class Process {
  public:
    // The command's standard error is read as its output too.
    explicit Process(const std::string& command)
        : mPipe(popen(("exec " + command + " 2>&1").c_str(), "r")) {}

    std::string line() {
        std::array<char, 512> text{};
        return fgets(text.data(), text.size(), mPipe) != nullptr ? text.data() : "";
    }
    Ended end() {
        Ended ended{};
        for (std::string next = line(); !next.empty(); next = line()) {
            ended.output += next;
        }
        const int status = pclose(mPipe);
        ended.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        return ended;
    }

  private:
    FILE* mPipe;
};

int askHistogram(db_histogram_response& response) {
    vxIpcEndpoint endpoint{};
    if (vxIpcInit("rtos_media_db", &endpoint) < 0) {
        return -1;
    }
    db_histogram_request request{};
    request.header.command_type = DB_CMD_MEDIA_HISTOGRAM;
    const int received = vxIpcSend(&endpoint, &request, sizeof(request)) < 0
                             ? -1
                             : vxIpcReceive(&endpoint, &response, sizeof(response));
    vxIpcDestroy(&endpoint);
    return received;
}

TEST(MediadbSim, servesACardUntilItIsStopped) {
    for (const char* signal : {"INT", "TERM"}) {
        const std::string pidFile = "/tmp/sim.pid";
        Process sim("sh -c 'echo $$ > " + pidFile +
                    "; exec " MEDIADB_SIM " --log --fault 2:refuse " + sampleCard() + "'");
        EXPECT_THAT(sim.line(), HasSubstr("serving 13 items"));
        db_histogram_response response{};
        EXPECT_EQ(askHistogram(response), 148);
        EXPECT_EQ(response.buckets[0], 2u);
        EXPECT_LT(askHistogram(response), 0);
        uint32_t length = 0;
        uint32_t model = 0;
        EXPECT_EQ(csi_get(CSI_MODEL_NUMBER, sizeof(model), &length, &model), 0);
        EXPECT_EQ(model, 51u);

        const Ended second = Process(MEDIADB_SIM " " + sampleCard()).end();
        EXPECT_EQ(second.status, 1);
        EXPECT_THAT(second.output, HasSubstr("already"));

        ASSERT_EQ(std::system(("kill -" + std::string(signal) + " $(cat " + pidFile + ")").c_str()),
                  0);
        const Ended first = sim.end();
        EXPECT_EQ(first.status, 0);
        EXPECT_THAT(first.output, HasSubstr("2: command 10 (media histogram), 12 bytes: "
                                            "connection closed, disturbed"));
        EXPECT_TRUE(std::filesystem::is_empty("/tmp/vxipc"));
    }
}

TEST(MediadbSim, endsWithTwoWhenItIsCalledWrongly) {
    const auto bad = makeCard({}, R"({"files": []})").string();
    for (const auto& [arguments, reason] :
         {std::pair<std::string, const char*>{"", "CARD is required"},
          {"/tmp/nowhere", "/tmp/nowhere/DCIM: No such file"},
          {bad, "card.json: files: must be an object"},
          {"--fault odd " + sampleCard(), "'odd' is no fault"}}) {
        const Ended ended = Process(MEDIADB_SIM " " + arguments).end();
        EXPECT_EQ(ended.status, 2) << arguments;
        EXPECT_THAT(ended.output, HasSubstr(reason));
    }
}

}  // namespace

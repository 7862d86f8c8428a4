// mediadb-sim as a process.
#include <gmock/gmock.h>

#include <filesystem>

#include "libvxMediaRTOSDB/src/db_responses.h"
#include "platform/csi.h"
#include "platform/vxipc.h"
#include "tests/simulator/sample_card.h"
#include "tests/support/child_process.h"

namespace {

using testing::HasSubstr;

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
    for (int signal : {SIGINT, SIGTERM}) {
        ChildProcess sim(MEDIADB_SIM " --log --fault 2:refuse " + sampleCard());
        EXPECT_THAT(sim.output("\n"), HasSubstr("serving 13 items"));
        db_histogram_response response{};
        EXPECT_EQ(askHistogram(response), 148);
        EXPECT_EQ(response.buckets[0], 2u);
        EXPECT_LT(askHistogram(response), 0);
        uint32_t length = 0;
        uint32_t model = 0;
        EXPECT_EQ(csi_get(CSI_MODEL_NUMBER, sizeof(model), &length, &model), 0);
        EXPECT_EQ(model, 51u);

        ChildProcess second(MEDIADB_SIM " " + sampleCard());
        EXPECT_EQ(second.exitStatus(), 1);
        EXPECT_THAT(second.output(), HasSubstr("already"));

        sim.stop(signal);
        EXPECT_EQ(sim.exitStatus(), 0);
        EXPECT_THAT(sim.output(), HasSubstr("2: command 10 (media histogram), 12 bytes: "
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
        ChildProcess sim(MEDIADB_SIM " " + arguments);
        EXPECT_EQ(sim.exitStatus(), 2) << arguments;
        EXPECT_THAT(sim.output(), HasSubstr(reason));
    }
}

}  // namespace

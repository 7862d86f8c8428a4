// mediadb-sim as a process.
#include <gmock/gmock.h>

#include <filesystem>

#include "libvxMediaRTOSDB/src/db_responses.h"
#include "libvxMediaRTOSDB/src/zep_queries.h"
#include "platform/csi.h"
#include "tests/simulator/sample_card.h"
#include "tests/support/child_process.h"

namespace {

using testing::HasSubstr;

TEST(MediadbSim, servesACardUntilItIsStopped) {
    for (int signal : {SIGINT, SIGTERM}) {
        ChildProcess sim(MEDIADB_SIM " --log --fault 2:short=20 " + sampleCard());
        EXPECT_THAT(sim.output("\n"), HasSubstr("serving 13 items"));
        for (const uint32_t videos : {2u, 0u}) {
            uint32_t histogram[kHistogramBuckets] = {};
            EXPECT_EQ(dbGetMediaHistogram(nullptr, nullptr, histogram), 0);
            EXPECT_EQ(histogram[DB_CONTENT_TYPE_SINGLE_VIDEO], videos);
        }
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
                                            "reply of 20 bytes, disturbed"));
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

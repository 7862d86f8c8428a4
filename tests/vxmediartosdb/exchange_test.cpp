#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "libvxMediaRTOSDB/src/rtos_connection.h"
#include "libvxMediaRTOSDB/src/util_log.h"
#include "tests/support/scripted_platform.h"

namespace {

using namespace scripted;

class ExchangeTest : public testing::Test {
  protected:
    void SetUp() override { reset(); }
    void TearDown() override { g_logLevel = UTIL_LOG_ERROR; }

    // Sends the request 01 02 03 04.
    int call() {
        rtosConnection connection;
        EXPECT_EQ(rtosConnectionCtor(&connection), 0);
        const Bytes request = words({0x04030201});
        const int result = rtosCall(&connection, request.data(), 4, mResponse);
        rtosConnectionDtor(&connection);
        EXPECT_EQ(platform.channels.back(), "rtos_media_db");
        EXPECT_EQ(platform.closed, platform.opened);
        for (uint32_t word : connection.endpoint.opaque)
            EXPECT_EQ(word, 0u);
        return result;
    }

    std::string dump(uint32_t level) {
        g_logLevel = level;
        testing::internal::CaptureStdout();
        call();
        return testing::internal::GetCapturedStdout();
    }

    uint8_t mResponse[1500] = {};
};

TEST_F(ExchangeTest, RetriesElevenTimes) {
    const struct {
        int failedSends, failedReceives;
        Bytes reply;
        int result;
        size_t requests;
    } rows[] = {
        {0, 0, Bytes(1500, 1), 1500, 1},
        {0, 0, Bytes(7, 1), 7, 1},
        {0, 0, {}, 0, 1},
        {10, 0, Bytes(40, 1), 40, 11},
        {5, 5, Bytes(40, 1), 40, 11},
        {11, 0, {}, -1, 11},
        {5, 6, {}, -1, 11},
        {0, 1, Bytes(1501, 1), -1, 11},
    };
    for (const auto& row : rows) {
        reset();
        platform.then(sendFails(-7), row.failedSends);
        platform.then(receiveFails(-8), row.failedReceives);
        platform.then(reply(row.reply), 11);
        mResponse[1499] = 0xAA;
        EXPECT_EQ(call(), row.result);
        EXPECT_EQ(platform.requests, std::vector<Bytes>(row.requests, words({0x04030201})));
        const size_t pauses = row.result < 0 ? 11 : row.requests - 1;
        EXPECT_EQ(platform.pauses, std::vector<unsigned>(pauses, 100000));
        EXPECT_EQ(platform.logged("error on IPC send, retrying, ret -7\n"), row.failedSends > 0);
        EXPECT_EQ(platform.logged("error on IPC received, retrying, bytesRead -8\n"),
                  row.failedReceives > 0 && row.failedSends < 11);
        EXPECT_EQ(platform.logged("exhausted retries on IPC exchange, exiting\n"), row.result < 0);
        EXPECT_EQ(mResponse[1499], row.result == 1500 ? 1 : row.failedSends == 11 ? 0xAA : 0);
    }
}

TEST_F(ExchangeTest, ReportsAChannelThatDoesNotOpen) {
    platform.initResults = {-5, 3};
    rtosConnection connection;
    EXPECT_EQ(rtosConnectionCtor(&connection), -5);
    EXPECT_TRUE(platform.logged("UTIL_LOG_ERROR:vxIpcInit fail, ret -5\n @rtos_connection.cpp:"));
    EXPECT_EQ(rtosConnectionCtor(&connection), 3);
    EXPECT_EQ(platform.logs.size(), 1u);
}

TEST_F(ExchangeTest, DumpsWhatGoesOverTheChannel) {
    Bytes bytes;
    for (uint8_t i = 0; i < 40; i++)
        bytes.push_back(static_cast<uint8_t>(i * 7));
    platform.then(reply(bytes), 2);
    EXPECT_EQ(dump(UTIL_LOG_INFO), "");
    const std::string sent = "\nSnd :\n[00000/00004]: 01 02 03 04 \n";
    EXPECT_EQ(dump(UTIL_LOG_TRACE),
              sent +
                  "\nRcv :\n[00000/00040]: 00 07 0e 15  1c 23 2a 31   38 3f 46 4d  54 5b 62 69    "
                  "70 77 7e 85  8c 93 9a a1   a8 af b6 bd  c4 cb d2 d9   "
                  "\n[00032/00040]: e0 e7 ee f5  fc 03 0a 11  \n");
    platform.then(sendFails());
    platform.then(receiveFails());
    platform.then(reply({}));
    EXPECT_EQ(dump(UTIL_LOG_TRACE), sent + sent + "\nRcv :\n" + sent + "\nRcv :\n");
}

}  // namespace

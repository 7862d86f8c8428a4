#include <gtest/gtest.h>

#include "libvxMediaRTOSDB/src/rtos_connection.h"
#include "libvxMediaRTOSDB/src/util_log.h"
#include "tests/support/scripted_platform.h"

namespace {

using namespace scripted;

uint8_t response[1500];

int callOnce() {
    rtosConnection connection;
    EXPECT_EQ(rtosConnectionCtor(&connection), 0);
    const Bytes request = words({0x04030201});
    const int result = rtosCall(&connection, request.data(), 4, response);
    rtosConnectionDtor(&connection);
    EXPECT_EQ(connection.endpoint.opaque[46], 0u);
    EXPECT_EQ(platform.channels.back(), "rtos_media_db");
    EXPECT_EQ(platform.closed, platform.opened);
    return result;
}

TEST(RtosCall, RetriesElevenTimes) {
    const struct {
        int failedSends, failedReceives;
        Bytes reply;
        int result;
        size_t pauses;
    } rows[] = {
        {0, 0, Bytes(1500, 1), 1500, 0}, {0, 0, Bytes(7, 1), 7, 0},   {0, 0, {}, 0, 0},
        {10, 0, Bytes(40, 1), 40, 10},   {5, 5, Bytes(9, 1), 9, 10},  {11, 0, {}, -1, 11},
        {5, 6, Bytes(9, 1), -1, 11},     {0, 0, Bytes(1501), -1, 11},
    };
    for (const auto& row : rows) {
        reset();
        platform.then(sendFails(-7), row.failedSends);
        platform.then(receiveFails(-8), row.failedReceives);
        platform.then(reply(row.reply), 11);
        response[1499] = 0xAA;
        EXPECT_EQ(callOnce(), row.result);
        EXPECT_EQ(platform.requests.size(), row.pauses + (row.result >= 0));
        EXPECT_EQ(platform.requests.back(), words({0x04030201}));
        EXPECT_EQ(platform.pauses, std::vector<unsigned>(row.pauses, 100000));
        EXPECT_EQ(platform.logged("error on IPC send, retrying, ret -7\n"), row.failedSends > 0);
        EXPECT_EQ(platform.logged("exhausted retries on IPC exchange, exiting\n"), row.result < 0);
        EXPECT_EQ(platform.logged("error on IPC received, retrying, bytesRead -8\n"),
                  row.failedReceives > 0);
        EXPECT_EQ(response[1499] == 0xAA, row.failedSends == 11);  // cleared before a receive
    }
    platform.initResults = {-5};
    rtosConnection connection;
    EXPECT_EQ(rtosConnectionCtor(&connection), -5);
    EXPECT_TRUE(platform.logged("UTIL_LOG_ERROR:vxIpcInit fail, ret -5\n @rtos_connection.cpp:"));
}

TEST(RtosCall, DumpsWhatGoesOverTheChannel) {
    reset();
    Bytes bytes;
    for (unsigned i = 0; i < 40; i++)
        bytes.push_back(static_cast<uint8_t>(i * 7));
    platform.then(reply(bytes), 2);
    platform.then(sendFails());
    platform.then(receiveFails());
    platform.then(reply({}));
    testing::internal::CaptureStdout();
    g_logLevel = UTIL_LOG_INFO;
    callOnce();
    g_logLevel = UTIL_LOG_TRACE;
    callOnce();
    callOnce();
    g_logLevel = UTIL_LOG_ERROR;
    const std::string sent = "\nSnd :\n[00000/00004]: 01 02 03 04 \n";
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              sent +
                  "\nRcv :\n[00000/00040]: 00 07 0e 15  1c 23 2a 31   38 3f 46 4d  54 5b 62 69    "
                  "70 77 7e 85  8c 93 9a a1   a8 af b6 bd  c4 cb d2 d9   "
                  "\n[00032/00040]: e0 e7 ee f5  fc 03 0a 11  \n" +
                  sent + sent + "\nRcv :\n" + sent + "\nRcv :\n");
}

}  // namespace

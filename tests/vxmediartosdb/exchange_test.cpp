#include <gtest/gtest.h>

#include <array>
#include <numeric>

#include "tests/support/scripted_platform.h"
#include <mediacheckd/vxMediaRTOSDB/rtos_connection.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

using namespace scripted;

uint8_t response[1500];

int callOnce() {
    rtosConnection connection;
    EXPECT_EQ(rtosConnectionCtor(&connection), 0);
    connection.endpoint.opaque[46] = 1;
    const Bytes request = words({0x04030201});
    const int result = rtosCall(&connection, request.data(), 4, response);
    rtosConnectionDtor(&connection);
    EXPECT_EQ(connection.endpoint.opaque[46], 0u);
    EXPECT_EQ(platform.channels.back(), "rtos_media_db");
    EXPECT_EQ(platform.closed, platform.opened);
    return result;
}

TEST(RtosCall, RetriesElevenTimes) {
    using Row = std::array<int, 3>;  // failed sends, failed receives, bytes of the reply then
    for (const auto& [sends, receives, size] :
         {Row{0, 0, 1500}, Row{0, 0, 7}, Row{0, 0, 0}, Row{10, 0, 40}, Row{5, 5, 9}, Row{11, 0, 0},
          Row{5, 6, 9}, Row{0, 0, 1501}}) {
        reset();
        platform.then(sendFails(-7), sends);
        platform.then(receiveFails(-8), receives);
        platform.then(reply(Bytes(static_cast<size_t>(size))), 11);
        response[1499] = 0xAA;
        const bool succeeds = sends + receives < 11 && size <= 1500;
        const auto pauses = static_cast<size_t>(succeeds ? sends + receives : 11);
        EXPECT_EQ(callOnce(), succeeds ? size : -1);
        EXPECT_EQ(platform.requests, std::vector(pauses + succeeds, words({0x04030201})));
        EXPECT_EQ(platform.pauses, std::vector<unsigned>(pauses, 100000));
        EXPECT_EQ(platform.logged("error on IPC send, retrying, ret -7\n"), sends > 0);
        EXPECT_EQ(platform.logged("exhausted retries on IPC exchange, exiting\n"), !succeeds);
        EXPECT_EQ(platform.logged("error on IPC received, retrying, bytesRead -8\n"), receives > 0);
        EXPECT_EQ(response[1499] == 0xAA, sends == 11);  // cleared before a receive
    }
    response[0] = 0xAA;
    rtosConnection open{};
    EXPECT_EQ(rtosConnectionRecv(&open, response, -1), -1);
    EXPECT_EQ(response[0], 0xAA);
    platform.initResults = {-5};
    rtosConnection connection;
    EXPECT_EQ(rtosConnectionCtor(&connection), -5);
    EXPECT_TRUE(platform.logged("UTIL_LOG_ERROR:vxIpcInit fail, ret -5\n @rtos_connection.cpp:"));
}

TEST(RtosCall, DumpsWhatGoesOverTheChannel) {
    reset();
    Bytes bytes(40);
    std::iota(bytes.begin(), bytes.end(), uint8_t{0xF0});
    platform.exchanges = {reply(bytes), reply(bytes), sendFails(), receiveFails(), reply({})};
    testing::internal::CaptureStdout();
    for (g_logLevel = UTIL_LOG_INFO; !platform.exchanges.empty(); g_logLevel = UTIL_LOG_TRACE) {
        callOnce();
    }
    g_logLevel = UTIL_LOG_ERROR;
    const std::string sent = "\nSnd :\n[00000/00004]: 01 02 03 04 \n";
    const std::string dump =
        "\n[00000/00040]: f0 f1 f2 f3  f4 f5 f6 f7   f8 f9 fa fb  fc fd fe ff    "
        "00 01 02 03  04 05 06 07   08 09 0a 0b  0c 0d 0e 0f   "
        "\n[00032/00040]: 10 11 12 13  14 15 16 17  \n";
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              sent + "\nRcv :" + dump + sent + sent + "\nRcv :\n" + sent + "\nRcv :\n");
}

}  // namespace

#include "simulator/exchanges.h"

#include <gmock/gmock.h>

#include <sstream>

namespace {

using simulator::parseFault;
using testing::HasSubstr;

TEST(Fault, isReadOrRefusedWithAReason) {
    const struct {
        const char* text;
        const char* reason;  // empty: it is a fault
    } cases[] = {
        {"refuse", ""},
        {"7:no-reply", ""},
        {"status=4", ""},
        {"1:short=19", ""},
        {"wrong-token", ""},
        {"too-many", ""},
        {"4294967295:delay=0", ""},
        {"", "no fault"},
        {"refused", "no fault"},
        {"short", "needs a value"},
        {"refuse=1", "no value"},
        {"0:refuse", "from 1"},
        {"x:refuse", "no number"},
        {"short=-1", "no number"},
        {"short=", "no number"},
        {"delay=4294967296", "no number"},
        {"1:2:refuse", "no fault"},
    };
    for (const auto& [text, reason] : cases) {
        SCOPED_TRACE(text);
        try {
            (void)parseFault(text);
            EXPECT_STREQ(reason, "");
        } catch (const std::invalid_argument& error) {
            EXPECT_THAT(error.what(), HasSubstr(reason));
            EXPECT_STRNE(reason, "");
        }
    }
    EXPECT_EQ(parseFault("3:short=20").exchange, 3u);
    EXPECT_EQ(parseFault("3:short=20").value, 20u);
}

TEST(Exchanges, happenAsTheFaultsSay) {
    db_request_header request{};
    request.command_type = DB_CMD_MEDIA_HISTOGRAM;
    request.request_count = 1;
    request.token = 5;
    struct Case {
        const char* fault;
        std::size_t messages = 1;
        std::size_t bytes = 148;
        bool close = false;
        uint32_t status = 0;
        uint32_t count = 1;
        uint32_t token = 5;
        int delay = 0;
        const char* logged = "reply of 148 bytes, disturbed";
    };
    const Case cases[] = {
        {.fault = "refuse", .messages = 0, .close = true, .logged = "connection closed, disturbed"},
        {.fault = "no-reply", .messages = 0, .logged = "no reply, disturbed"},
        {.fault = "status=3",
         .bytes = 20,
         .status = 3,
         .count = 0,
         .logged = "reply of 20 bytes, disturbed"},
        {.fault = "short=21", .bytes = 21, .logged = "reply of 21 bytes, disturbed"},
        {.fault = "short=9999"},
        {.fault = "wrong-token", .token = ~5u},
        {.fault = "too-many", .count = 2},
        {.fault = "delay=250", .delay = 250},
        {.fault = "3:refuse", .logged = "2: command 10 (media histogram), 12 bytes: reply of 148"},
    };
    for (const Case& wanted : cases) {
        SCOPED_TRACE(wanted.fault);
        simulator::Database database;
        std::ostringstream log;
        simulator::Exchanges exchanges(database, {parseFault(wanted.fault)}, &log);
        (void)exchanges.next(std::as_bytes(std::span(&request, 1)));
        const host::Reply reply = exchanges.next(std::as_bytes(std::span(&request, 1)));
        EXPECT_THAT(log.str(), HasSubstr(wanted.logged));
        EXPECT_EQ(reply.close, wanted.close);
        EXPECT_EQ(reply.delay.count(), wanted.delay);
        ASSERT_EQ(reply.messages.size(), wanted.messages);
        if (wanted.messages > 0) {
            EXPECT_EQ(reply.messages[0].size(), wanted.bytes);
            db_response_header header{};
            std::memcpy(&header, reply.messages[0].data(), sizeof(header));
            EXPECT_EQ(header.status, wanted.status);
            EXPECT_EQ(header.count_returned, wanted.count);
            EXPECT_EQ(header.token, wanted.token);
        }
    }
}

TEST(Exchanges, countEachFaultOnItsOwnExchange) {
    simulator::Database database;
    simulator::Exchanges exchanges(
        database, {parseFault("2:no-reply"), parseFault("3:refuse"), parseFault("3:no-reply")},
        nullptr);
    EXPECT_EQ(exchanges.next({}).messages.size(), 1u);
    EXPECT_EQ(exchanges.next({}).messages.size(), 0u);
    EXPECT_TRUE(exchanges.next({}).close);
    EXPECT_EQ(exchanges.next({}).messages.size(), 1u);
}

}  // namespace

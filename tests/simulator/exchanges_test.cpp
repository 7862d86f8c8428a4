#include "simulator/exchanges.h"

#include <gmock/gmock.h>

#include <sstream>

namespace {

using simulator::parseFault;
using testing::HasSubstr;

TEST(Exchanges, happenAsTheFaultsSay) {
    db_histogram_request request{};
    request.header.command_type = DB_CMD_MEDIA_HISTOGRAM;
    request.header.request_count = 1;
    struct Case {
        const char* fault;
        std::size_t bytes = 148;  // 0: no message
        uint32_t status = 0;
        uint32_t count = 1;
        uint32_t token = 0;
        int delay = 0;
        const char* logged = "reply of 148 bytes, disturbed";
    };
    const Case cases[] = {
        {.fault = "refuse", .bytes = 0, .logged = "connection closed, disturbed"},
        {.fault = "no-reply", .bytes = 0, .logged = "no reply, disturbed"},
        {.fault = "status=3", .bytes = 20, .status = 3, .count = 0, .logged = "20 bytes"},
        {.fault = "short=21", .bytes = 21, .logged = "21 bytes, disturbed"},
        {.fault = "short=9999"},
        {.fault = "wrong-token", .token = ~0u},
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
        EXPECT_EQ(reply.close, std::string_view(wanted.fault) == "refuse");
        EXPECT_EQ(reply.delay.count(), wanted.delay);
        ASSERT_EQ(reply.messages.size(), wanted.bytes > 0 ? 1u : 0u);
        if (wanted.bytes > 0) {
            EXPECT_EQ(reply.messages[0].size(), wanted.bytes);
            db_response_header header{};
            std::memcpy(&header, reply.messages[0].data(), sizeof(header));
            EXPECT_EQ(header.status, wanted.status);
            EXPECT_EQ(header.count_returned, wanted.count);
            EXPECT_EQ(header.token, wanted.token);
        }
    }
}

}  // namespace

#include "simulator/exchanges/exchanges.h"

#include <gmock/gmock.h>

#include <sstream>

namespace {

using testing::HasSubstr;

// The reply as words: its bytes, and status, count and token of its header, and what else it does.
std::string summary(const host::Reply& reply) {
    std::ostringstream text;
    for (const simulator::Message& message : reply.messages) {
        db_response_header header{};
        std::memcpy(&header, message.data(), sizeof(header));
        text << message.size() << " bytes " << header.status << ' ' << header.count_returned << ' '
             << header.token;
    }
    text << (reply.close ? " closed" : "") << (reply.delay.count() == 250 ? " delayed" : "");
    return text.str();
}

TEST(Exchanges, happenAsTheFaultsSay) {
    const struct {
        const char* fault;
        const char* reply;
        const char* logged = "reply of 148 bytes, disturbed";
    } cases[] = {
        {"refuse", " closed", "connection closed, disturbed"},
        {"no-reply", "", "no reply, disturbed"},
        {"status=3", "20 bytes 3 0 0", "20 bytes"},
        {"short=21", "21 bytes 0 1 0", "21 bytes, disturbed"},
        {"short=9999", "148 bytes 0 1 0"},
        {"wrong-token", "148 bytes 0 1 4294967295"},
        {"too-many", "148 bytes 0 2 0"},
        {"delay=250", "148 bytes 0 1 0 delayed"},
        {"3:refuse", "148 bytes 0 1 0", "2: command 10 (media histogram), 12 bytes: reply of 148"},
    };
    const uint32_t request[] = {DB_CMD_MEDIA_HISTOGRAM, 1, 0};
    for (const auto& [fault, reply, logged] : cases) {
        simulator::Database database;
        std::ostringstream log;
        simulator::Exchanges exchanges(&log);
        exchanges.add(fault);
        (void)exchanges.next(database, std::as_bytes(std::span(request)));
        EXPECT_EQ(summary(exchanges.next(database, std::as_bytes(std::span(request)))), reply)
            << fault;
        EXPECT_THAT(log.str(), HasSubstr(logged)) << fault;
    }
}

}  // namespace

#include "tests/vxmediartosdb/reply_sweep.h"

#include <set>

#include "libvxMediaRTOSDB/src/member_mask.h"

namespace scripted {
namespace {

// Asks once. The first request gets the reply; further ones, for the durations of grouped videos,
// get an empty one.
void askOnce(const Query& query, const Bytes& reply, bool rightToken) {
    reset();
    g_logLevel = UTIL_LOG_DEBUG;
    platform.answer = [&](const Bytes& request) -> Exchange {
        if (platform.requests.size() > 1)
            return scripted::reply({});
        Exchange exchange = scripted::reply(reply);
        if (rightToken && reply.size() >= kToken + 4)
            putWord(exchange.replies.front(), kToken, wordAt(request, 8));
        if (!query.nextReply.empty())
            exchange.replies.push_back(query.nextReply);
        return exchange;
    };
    query.ask(reply);
    EXPECT_EQ(platform.opened, platform.closed);
    EXPECT_LE(platform.requests.size(), 1 + 2 * size_t{kMaxGroupSpan});
}

TEST_P(ReplySweep, EveryLength) {
    const Query& query = GetParam();
    for (size_t length = 0; length <= query.reply.size(); length++) {
        SCOPED_TRACE(length);
        Bytes reply = query.reply;
        reply.resize(length);
        reply.shrink_to_fit();
        askOnce(query, reply, true);
    }
}

TEST_P(ReplySweep, EveryWord) {
    const Query& query = GetParam();
    for (size_t offset = 0; offset + 4 <= query.reply.size(); offset += 4) {
        const uint32_t right = wordAt(query.reply, offset);
        std::set<uint32_t> values = {0, 1, right - 1, right + 1, 0x7FFFFFFF, 1u << 31, ~0u};
        for (uint32_t kind = 0; right < 15 && kind < 15; kind++)  // every content type and status
            values.insert(kind);
        for (uint32_t value : values) {
            SCOPED_TRACE(testing::Message() << "offset " << offset << " value " << value);
            Bytes reply = query.reply;
            putWord(reply, offset, value);
            askOnce(query, reply, offset != kToken);
        }
    }
}

}  // namespace
}  // namespace scripted

// Asks a query with every reply that is cut short or wrong in one word.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "libvxMediaRTOSDB/src/records/member_mask.h"
#include "tests/support/db_replies.h"
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace scripted {

constexpr size_t kToken = 16;
constexpr uint32_t kUntouched = 0xEEEEEEEE;

// Starts without a script and leaves the log as quiet as it is at first.
class QueryTest : public testing::Test {
  protected:
    void SetUp() override { reset(); }
    void TearDown() override { g_logLevel = UTIL_LOG_ERROR; }
};

inline Bytes cut(const Bytes& bytes, size_t size) {
    return {bytes.begin(), bytes.begin() + static_cast<long>(size)};
}

inline Bytes with(Bytes bytes, size_t offset, uint32_t value) {
    putWord(bytes, offset, value);
    return bytes;
}

// A word of the reply; bytes that did not come are 0.
inline uint32_t wordOf(Bytes reply, size_t offset) {
    reply.resize(1500);
    return wordAt(reply, offset);
}

// Asks the query, which got the reply, and judges its result and outputs.
using Ask = std::function<void(const Bytes& reply)>;

// Asks once. The first request gets the reply; further ones, for the durations of grouped videos,
// get an empty one.
inline void askOnce(const Ask& ask, const Bytes& reply, bool rightToken) {
    reset();
    g_logLevel = UTIL_LOG_DEBUG;
    platform.answer = [&](const Bytes& request) {
        if (platform.requests.size() > 1) {
            return scripted::reply({});
        }
        const bool mended = rightToken && reply.size() >= kToken + 4;
        return scripted::reply(mended ? with(reply, kToken, wordAt(request, 8)) : reply);
    };
    ask(reply);
    EXPECT_EQ(platform.opened, platform.closed);
    EXPECT_LE(platform.requests.size(), 1 + 2 * size_t{kMaxGroupSpan});
}

// Returns every line that was logged.
inline std::set<std::string> sweep(const std::string& name, const Bytes& full, const Ask& ask) {
    SCOPED_TRACE(name);
    std::set<std::string> lines;
    for (size_t length = 0; length <= full.size(); ++length) {
        SCOPED_TRACE(length);
        askOnce(ask, cut(full, length), true);
        lines.insert(platform.logs.begin(), platform.logs.end());
    }
    for (size_t offset = 0; offset + 4 <= full.size(); offset += 4) {
        const uint32_t right = wordAt(full, offset);
        std::set<uint32_t> values = {0, 1, right - 1, right + 1, 0x7FFFFFFF, 1u << 31, ~0u};
        for (uint32_t kind = 0; right < 15 && kind < 15; ++kind) {  // every content type and status
            values.insert(kind);
        }
        for (uint32_t value : values) {
            SCOPED_TRACE(testing::Message() << "offset " << offset << " value " << value);
            askOnce(ask, with(full, offset, value), offset != kToken);
            lines.insert(platform.logs.begin(), platform.logs.end());
        }
    }
    return lines;
}

}  // namespace scripted

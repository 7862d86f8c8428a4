// Asks queries with every reply that is cut short or wrong in one word. Each test program that
// sweeps instantiates the suite ReplySweep with its queries.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>

#include "libvxMediaRTOSDB/src/util_log.h"
#include "tests/support/db_replies.h"

namespace scripted {

constexpr size_t kToken = 16;
constexpr uint32_t kUntouched = 0xEEEEEEEE;

struct Query {
    const char* name;
    Bytes reply;      // the full reply; its token is set to the request's
    Bytes nextReply;  // a second message of the answer, if there is one
    std::function<void(const Bytes& reply)> ask;  // asks the query, judges result and outputs
};

// Starts without a script and leaves the log as quiet as it is at first.
class QueryTest : public testing::Test {
  protected:
    void SetUp() override { reset(); }
    void TearDown() override { g_logLevel = UTIL_LOG_ERROR; }
};

class ReplySweep : public QueryTest, public testing::WithParamInterface<Query> {};

inline std::string queryName(const testing::TestParamInfo<Query>& query) {
    std::string name = query.param.name;
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
}

// A word of the reply; bytes that did not come are 0.
inline uint32_t wordOf(Bytes reply, size_t offset) {
    reply.resize(1500);
    return wordAt(reply, offset);
}

}  // namespace scripted

// Misbehaviour on purpose, for the tests of whoever asks the database.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/host/channel_server.h"
#include "simulator/answers/reply_record.h"

namespace simulator {

enum class FaultKind {
    kRefuse,      // the connection is closed without an answer
    kNoReply,     // the request is carried out, its answer is lost
    kStatus,      // the database refuses with a status
    kShort,       // the first message ends after so many bytes
    kWrongToken,  // the token is not the request's
    kTooMany,     // the response claims more entries than were asked for
    kDelay,       // the answer comes so many milliseconds late
};

struct Fault {
    FaultKind kind;
    uint32_t value = 0;  // what kStatus, kShort and kDelay need
};

// Reads KIND[=VALUE], such as "short=20" or "refuse".
// Throws std::invalid_argument that says what is wrong.
[[nodiscard]] Fault parseFault(std::string_view kind);

// The kinds with their values, for a help text.
[[nodiscard]] std::string faultSyntax();

// Whether the database gets to see a request on which this fault happens.
[[nodiscard]] bool reachesDatabase(const Fault& fault);

// Makes the fault happen to the reply to the request.
void applyFault(const Fault& fault, Request request, host::Reply& reply);

}  // namespace simulator

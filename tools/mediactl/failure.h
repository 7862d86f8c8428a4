// Why a command fails: a cause and a remedy, told in the same words by every command.
#pragma once

#include <string>

#include "tools/mediactl/output.h"

namespace mediactl {

enum ExitStatus : int {
    kDone = 0,
    kFailed = 1,  // a query failed
    kWrongCall = 2,
};

struct Failure {
    const char* condition;  // its name, for scripts
    std::string cause;
    std::string remedy;             // empty where there is none to tell
    Json details = Json::object();  // numbers that belong to the cause

    // Cause and remedy in one sentence.
    [[nodiscard]] std::string sentence() const;
};

// Says it on standard error; where results are JSON, as the end of their document. Returns kFailed.
[[nodiscard]] int fail(const Failure& failure);

// A failure on this side of the channel, without a condition of its own; %m is the reason in errno.
[[nodiscard]] int fail(const char* format, ...) __attribute__((format(printf, 1, 2)));

// A call that cannot be carried out as it was written. Returns kWrongCall.
[[nodiscard]] int refuseCall(const std::string& cause, const std::string& remedy);

}  // namespace mediactl

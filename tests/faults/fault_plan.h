// Which call of a program fails, shared by who plans it and the preloaded calls that obey.
#pragma once

#include <atomic>
#include <cstdint>

constexpr char kFaultPlanFile[] = "/tmp/fault_plan";

struct FaultPlan {
    std::atomic<uint32_t> seen;  // calls that may fail, made so far
    char from[24];               // the count begins with this function's first call; any: ""
    uint32_t at;                 // the call that fails, from 1; 0 for none
    uint32_t error;              // which one of its manual page's errors, from 0
    bool lasting;                // the same function fails from then on
    bool exhausted;              // the call has no such error, and went well
    char call[24];               // the function, empty before its call
};

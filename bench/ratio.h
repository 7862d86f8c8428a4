// Ratios between benchmarks, which hold on any machine where absolute times do not.
#pragma once

#include <string>
#include <vector>

// One ratio: the time of a benchmark against the time of its baseline, with the goal for it.
// Both are named as Google Benchmark prints them, arguments included ("append/1000").
struct Ratio {
    std::string subject;
    std::string baseline;
    double atMost;  // 0 when there is no goal
};

// The main of a benchmark program: runs the benchmarks, prints their times and then each ratio of
// the fastest repetitions with its goal. Returns main's result: 0 unless the command line is wrong.
int runBenchmarks(int argc, char** argv, const std::vector<Ratio>& ratios);

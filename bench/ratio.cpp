#include "bench/ratio.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>

namespace {

// Prints the averages of the repetitions and keeps the fastest, on which other work of the machine
// leaves the least mark.
class FastestKeeper : public benchmark::ConsoleReporter {
  public:
    FastestKeeper() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        std::vector<Run> averages;
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Aggregate || run.error_occurred) {
                averages.push_back(run);
            } else {
                keep(run);
            }
        }
        ConsoleReporter::ReportRuns(averages);
    }

    // Seconds an iteration, or zero for a benchmark that did not run.
    double fastest(const std::string& name) const {
        const auto found = mFastest.find(name);
        return found == mFastest.end() ? 0 : found->second;
    }

  private:
    void keep(const Run& run) {
        const double seconds = run.real_accumulated_time / static_cast<double>(run.iterations);
        const auto [entry, isNew] = mFastest.emplace(run.run_name.str(), seconds);
        if (!isNew && seconds < entry->second) {
            entry->second = seconds;
        }
    }

    std::map<std::string, double> mFastest;
};

void printRatio(const Ratio& ratio, const FastestKeeper& times) {
    const double subject = times.fastest(ratio.subject);
    const double baseline = times.fastest(ratio.baseline);
    if (subject <= 0 || baseline <= 0) {
        return;
    }
    const double value = subject / baseline;
    printf("%-40s %8.2f times %-30s", ratio.subject.c_str(), value, ratio.baseline.c_str());
    if (ratio.atMost > 0) {
        printf(" goal: at most %.2f, %s", ratio.atMost, value <= ratio.atMost ? "met" : "MISSED");
    }
    printf("\n");
}

}  // namespace

int runBenchmarks(int argc, char** argv, const std::vector<Ratio>& ratios) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    // For who reads the times from --benchmark_out.
    for (const Ratio& ratio : ratios) {
        benchmark::AddCustomContext("goal of " + ratio.subject + " against " + ratio.baseline,
                                    std::to_string(ratio.atMost));
    }
    FastestKeeper times;
    benchmark::RunSpecifiedBenchmarks(&times);
    benchmark::Shutdown();
    for (const Ratio& ratio : ratios) {
        printRatio(ratio, times);
    }
    return 0;
}

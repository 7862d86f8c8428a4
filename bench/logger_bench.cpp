// The logger's two costs: of a line that is filtered and of a line that is written.
#include <benchmark/benchmark.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>

#include "bench/ratio.h"
#include <mediacheckd/vcore/log.h>

namespace {

constexpr char kDirectory[] = "100MEDIA";
constexpr char kFile[] = "IMG_0001.JPG";
constexpr unsigned kToken = 0xBEEF1234;

void lockUnlock(benchmark::State& state) {
    vcore::Mutex mutex;
    for (auto _ : state) {
        mutex.lock();
        mutex.unlock();
    }
}

// As the daemon runs: there is a logger, and it filters every line.
void filteredLine(benchmark::State& state) {
    vcore::Logger::init(0, 0, 0xFF, LOG_OUT_STDOUT, "");
    vcore::Logger& logger = *vcore::Logger::get();
    for (auto _ : state) {
        logger.log(vcore::kCategoryDaemon, vcore::kLevelNoise,
                   "  [NOISE]: [ZML]: dbGetZEPList returned %d\n", 1);
    }
}

void writtenLine(benchmark::State& state) {
    vcore::Logger::init(vcore::kLevelInfo, 0, 0xFF, LOG_OUT_FILE, "/tmp/logger_bench.log");
    [[maybe_unused]] const int emptied = vcore::Logger::get()->truncateFile();
    for (auto _ : state) {
        VLOG_INFO("[ZML]: Calling dbSetZEPUploadStatus(%s, %s, %d, 0x%08X)\n", kDirectory, kFile, 5,
                  kToken);
    }
}

void spdlogLine(benchmark::State& state) {
    constexpr bool kTruncate = true;
    spdlog::logger logger("spdlog", std::make_shared<spdlog::sinks::basic_file_sink_mt>(
                                        "/tmp/spdlog_bench.log", kTruncate));
    logger.set_pattern("%Y-%m-%dT%H:%M:%S.%e %v");
    logger.flush_on(spdlog::level::info);
    for (auto _ : state) {
        logger.info("   [INFO]: [ZML]: Calling dbSetZEPUploadStatus({}, {}, {}, 0x{:08X})",
                    kDirectory, kFile, 5, kToken);
    }
}

BENCHMARK(lockUnlock);
BENCHMARK(filteredLine);
BENCHMARK(writtenLine);
BENCHMARK(spdlogLine);

}  // namespace

int main(int argc, char** argv) {
    return runBenchmarks(
        argc, argv, {{"filteredLine", "lockUnlock", 1.05}, {"writtenLine", "spdlogLine", 0.6}});
}

#include <mediacheckd/vcore/logger.h>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <thread>

#include "tests/support/captured_sink.h"
#include <mediacheckd/vcore/log.h>
#include <mediacheckd/vcore/tracer.h>

namespace {

using vcore::Logger;
namespace fs = std::filesystem;

// A logger on a captured sink, and one without a sink afterwards.
struct Attached {
    Attached() { Logger::attach(sink); }
    ~Attached() { Logger::attach(nullptr); }
    CapturedSink sink;
};

// The lines of a file without their timestamps.
std::string messagesIn(const char* path) {
    std::string messages;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        messages += line.substr(line.find(' ') + 1) + '|';
    }
    return messages;
}

// First of all tests here: it needs a process without a logger.
TEST(Logger, IsMadeOnceAndReconfiguredAfterwards) {
    constexpr char kFirst[] = "/tmp/first.log";
    constexpr char kSecond[] = "/tmp/second.log";
    ASSERT_EQ(Logger::get(), nullptr);
    VLOG_ERROR("nobody listens\n");
    const vcore::Tracer untraced(3, 32, "untraced");

    const auto logTo = [](const char* path, const char* message) {
        Logger::init(8, 0, 3, LOG_OUT_FILE, path);
        EXPECT_EQ(Logger::get()->log(3, 8, "%s", message), 0);
    };
    logTo(kFirst, "one");
    Logger* const logger = Logger::get();
    EXPECT_EQ(messagesIn(kFirst), "one|");
    fs::remove(kFirst);
    logTo(kFirst, "into the removed file");
    EXPECT_FALSE(fs::exists(kFirst)) << "the same path is not opened again";
    logTo(kSecond, "two");
    logTo("", "without a file");
    logTo(kSecond, "three");
    EXPECT_EQ(messagesIn(kSecond), "two|three|");
    EXPECT_EQ(logger->truncateFile(), 0);
    logTo(kSecond, "four");
    EXPECT_EQ(logger->closeFile(), 0);
    logTo(kSecond, "closed");
    EXPECT_EQ(messagesIn(kSecond), "four|");
    logTo("/tmp/none/log", "lost");
    EXPECT_EQ(logger->truncateFile(), 1);
    logTo("", "without a file");
    EXPECT_FALSE(logger->truncateFile() || logger->closeFile());
    EXPECT_EQ(Logger::get(), logger);
}

TEST(Logger, AttachesSinksThatItDoesNotOwn) {
    {
        const Attached first;
        const Attached second;
        EXPECT_FALSE(Logger::get()->log(3, 1, "text") || Logger::get()->log(4, 1, "filtered"));
        EXPECT_EQ(Logger::get()->log(3, 1, "%s", "") & Logger::get()->log(4, 1, nullptr), 1);
        EXPECT_EQ(CapturedSink::take(), "text\n");
    }
    EXPECT_EQ(Logger::get()->log(3, 1, nullptr), 0) << "without a sink";
    Logger::init(~0U, 0, ~0U, LOG_OUT_FILE, "/tmp/attached.log");
    EXPECT_FALSE(fs::exists("/tmp/attached.log"));
}

TEST(Logger, TagsLinesByLevelAndTracesScopes) {
    const Attached attached;
    {
        const vcore::Tracer tracer(3, 32, "int f(int)");
        VLOG_ERROR("%d%%\n", 1);
        VLOG_WARNING("%s", "w");
        VLOG_INFO("i\n");
        VLOG_NOISE("n\n");
    }
    EXPECT_EQ(CapturedSink::take(),
              "  [TRACE]: int f(int) Enter\n  [ERROR]: 1%\n[WARNING]: w\n   [INFO]: i\n"
              "  [NOISE]: n\n  [TRACE]: int f(int) Exit\n");
}

// Its destructor runs when the logger's own globals would be gone.
const struct LogsAtExit {
    ~LogsAtExit() {
        static const CapturedSink sink;
        Logger::attach(sink);
        VLOG_ERROR("late\n");
        if (CapturedSink::take() != "  [ERROR]: late\n") {
            _exit(1);
        }
    }
} logsAtExit;

TEST(Logger, LetsTheChildOfAForkLog) {
    const Attached attached;
    std::atomic<bool> done = false;
    std::thread other([&] {
        while (!done) {
            Logger::get()->log(3, 1, "line");
        }
    });
    for (int i = 0; i < 200; ++i) {
        const pid_t child = fork();
        if (child == 0) {
            alarm(5);
            _exit(Logger::get()->log(3, 1, "child"));
        }
        int status = -1;
        waitpid(child, &status, 0);
        ASSERT_EQ(status, 0);
    }
    done = true;
    other.join();
}

TEST(Logger, WritesTheLinesOfThreadsOneAfterTheOther) {
    const Attached attached;
    const auto writeLines = [] {
        for (int line = 0; line < 500; ++line) {
            Logger::get()->log(3, 1, "%d", line % 10);
        }
    };
    std::thread other(writeLines);
    writeLines();
    other.join();
    EXPECT_EQ(CapturedSink::take().size(), 2 * 500 * 2U);
}

}  // namespace

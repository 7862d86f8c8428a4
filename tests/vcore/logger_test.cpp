#include "vcore/logger.h"

#include <gmock/gmock.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>
#include <vector>

#include "vcore/log.h"
#include "vcore/tracer.h"

namespace {

using testing::ElementsAre;
using vcore::Logger;
namespace fs = std::filesystem;

std::vector<std::string> g_messages;

void onLine(const char* line) {
    g_messages.emplace_back(strchr(line, ' ') + 1);
}

// Attaches a sink that passes the daemon's category to onLine, for the life of this object.
class Capture {
  public:
    Capture() : mSink(log_sink_create()) {
        g_messages.clear();
        log_sink_set_outputs(mSink, LOG_OUT_CALLBACK);
        log_sink_set_level(mSink, ~0U);
        log_sink_set_category_mask(mSink, vcore::kCategoryDaemon);
        log_sink_add_callback(mSink, onLine);
        Logger::attach(mSink);
    }
    ~Capture() {
        Logger::attach(nullptr);
        log_sink_destroy(mSink);
    }
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;

  private:
    log_sink_t* mSink;
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
        EXPECT_EQ(Logger::get()->log(3, 16, "filtered"), 0);
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
    EXPECT_EQ(logger->truncateFile() | logger->closeFile(), 0);
    EXPECT_EQ(Logger::get(), logger);
}

TEST(Logger, AttachesSinksThatItDoesNotOwn) {
    {
        const Capture first;
        const Capture second;
        EXPECT_EQ(Logger::get()->log(3, 1, "text"), 0);
        EXPECT_EQ(Logger::get()->log(3, 1, "%s", ""), 1);
        EXPECT_EQ(Logger::get()->log(4, 1, nullptr), 1);
        EXPECT_EQ(Logger::get()->log(4, 1, "other category"), 0);
        EXPECT_THAT(g_messages, ElementsAre("text\n"));
    }
    EXPECT_EQ(Logger::get()->log(3, 1, nullptr), 0) << "without a sink";
    Logger::init(~0U, 0, ~0U, LOG_OUT_FILE, "/tmp/attached.log");
    EXPECT_FALSE(fs::exists("/tmp/attached.log"));
}

TEST(Logger, TagsLinesByLevelAndTracesScopes) {
    const Capture capture;
    const auto scope = [] {
        const vcore::Tracer tracer(3, 32, "int f(int)");
        VLOG_ERROR("%d%%\n", 1);
        VLOG_WARNING("%s", "w");
        VLOG_INFO("i\n");
        VLOG_NOISE("n\n\n");
        throw std::runtime_error("leaves the scope");
    };
    EXPECT_THROW(scope(), std::runtime_error);
    EXPECT_THAT(g_messages,
                ElementsAre("  [TRACE]: int f(int) Enter\n", "  [ERROR]: 1%\n", "[WARNING]: w\n",
                            "   [INFO]: i\n", "  [NOISE]: n\n\n", "  [TRACE]: int f(int) Exit\n"));
}

TEST(Logger, WritesTheLinesOfThreadsOneAfterTheOther) {
    const Capture capture;
    std::vector<std::thread> threads(4);
    for (std::thread& thread : threads) {
        thread = std::thread([] {
            for (int line = 0; line < 500; ++line) {
                VLOG_INFO("line");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(g_messages, std::vector<std::string>(4 * 500, "   [INFO]: line\n"));
}

}  // namespace

#include "vcore/log_sink.h"

#include <gtest/gtest.h>

#include <ctime>
#include <memory>
#include <string>
#include <thread>

namespace {

// What the outputs received, each flushed write after the name of its output.
std::string g_written;

void onLine(const char* line) {
    g_written += std::string(" callback ") + line;
}
void onLineToo(const char* line) {
    g_written += std::string(" second ") + line;
}

FILE* recorder(const char* name) {
    const auto write = [](void* cookie, const char* bytes, size_t size) {
        g_written += static_cast<const char*>(cookie) + std::string(bytes, size);
        return static_cast<ssize_t>(size);
    };
    return fopencookie(const_cast<char*>(name), "w", {nullptr, write, nullptr, nullptr});
}

// A sink that passes everything to onLine.
class LogSink : public testing::Test {
  protected:
    LogSink() {
        log_sink_set_outputs(mSink, LOG_OUT_CALLBACK);
        log_sink_set_level(mSink, ~0U);
        log_sink_set_category_mask(mSink, ~0U);
        log_sink_add_callback(mSink, onLine);
    }
    ~LogSink() override { log_sink_destroy(mSink); }

    // Returns what the outputs receive without the timestamps, whose form it checks.
    std::string written(const std::string& message, uint32_t category = 3, uint32_t level = 1) {
        g_written.clear();
        EXPECT_EQ(log_sink_printf(mSink, category, level, "%s", message.c_str()), 0);
        std::string messages = g_written;
        const std::string form = "####-##-##T##:##:##.### ";
        for (size_t dot = 0; (dot = messages.find('.', dot)) != std::string::npos;) {
            std::string stamp = messages.substr(dot - 19, form.size());
            for (char& c : stamp) {
                c = c >= '0' && c <= '9' ? '#' : c;
            }
            EXPECT_EQ(stamp, form);
            messages.erase(dot - 19, form.size());
        }
        return messages;
    }

    log_sink_t* mSink = log_sink_create();
};

TEST_F(LogSink, FiltersByCategoryThresholdAndLevelMask) {
    struct {
        uint32_t category, categoryMask, threshold, levelMask;
        const char* writtenLevels;  // of levels 0, 1, 2, 8, 16, 32 and the highest bit
    } const cases[] = {{3, 0xFF, 0, 0, "y------"}, {3, 0xFF, 8, 0, "yyyy---"},
                       {4, 3, 32, 0, "-------"},   {4, 6, 8, 0, "yyyy---"},
                       {3, 2, 0, 0x20, "y----y-"}, {3, 2, 1, 0x1000000A, "yyyy---"},
                       {3, 0, 8, 0x3F, "-------"}, {3, 1, 0x80000000, 0, "yyyyyyy"}};
    for (const auto& c : cases) {
        log_sink_set_category_mask(mSink, c.categoryMask);
        log_sink_set_level(mSink, c.threshold);
        log_sink_set_level_mask(mSink, c.levelMask);
        std::string levels;
        for (const uint32_t level : {0U, 1U, 2U, 8U, 16U, 32U, 0x80000000U}) {
            levels += written("text", c.category, level).empty() ? '-' : 'y';
        }
        EXPECT_EQ(levels, c.writtenLevels) << &c - cases;
    }
}

TEST_F(LogSink, EndsEachLineWithOneNewline) {
    for (const char* const message : {"text", "a\nb\n", "", "100%"}) {
        EXPECT_EQ(written(std::string(message) + '\n'), std::string(" callback ") + message + '\n');
    }
    for (size_t size = 470; size < 520; ++size) {
        const std::string text(size, 'x');
        EXPECT_EQ(written(text), " callback " + text + '\n');
        EXPECT_EQ(written(text + '\n'), " callback " + text + '\n');
    }
    g_written.clear();
    EXPECT_EQ(log_sink_printf(mSink, 3, 1, "%s", "") & log_sink_printf(mSink, 3, 1, nullptr) &
                  log_sink_printf(nullptr, 3, 1, "text"),
              1);
    EXPECT_EQ(g_written, "");
}

TEST_F(LogSink, StampsLinesWithLocalTime) {
    const auto stamp = [](time_t second) {
        char text[64];
        strftime(text, sizeof text, " callback %Y-%m-%dT%H:%M:%S", localtime(&second));
        return std::string(text);
    };
    setenv("TZ", "XYZ-05:30", 1);
    const std::string before = stamp(time(nullptr));
    // In a thread of its own, for which no second has been converted yet.
    std::thread([&] { log_sink_printf(mSink, 3, 1, "text"); }).join();
    EXPECT_LE(before, g_written.substr(g_written.find(" call"), before.size()));
    EXPECT_GE(stamp(time(nullptr)), g_written.substr(g_written.find(" call"), before.size()));
    unsetenv("TZ");
}

TEST_F(LogSink, WritesToTheSelectedOutputsInOrderEachFlushed) {
    FILE* const file = recorder(" file ");
    log_sink_attach_stream(mSink, file);
    FILE* const realOut = std::exchange(stdout, recorder(" out "));
    FILE* const realErr = std::exchange(stderr, recorder(" err "));
    std::string actual[16];
    for (uint32_t outputs = 0; outputs < 16; ++outputs) {
        log_sink_set_outputs(mSink, outputs);
        actual[outputs] = written("text");
    }
    fclose(std::exchange(stdout, realOut));
    fclose(std::exchange(stderr, realErr));
    const char* const lines[] = {" out text\n", " err text\n", " file text\n", " callback text\n"};
    for (uint32_t outputs = 0; outputs < 16; ++outputs) {
        std::string expected;
        for (uint32_t bit = 0; bit < 4; ++bit) {
            expected += (outputs & 1U << bit) != 0 ? lines[bit] : "";
        }
        EXPECT_EQ(actual[outputs], expected);
    }
    log_sink_close_file(mSink);
}

TEST_F(LogSink, CallsEachCallbackOnceInOrder) {
    EXPECT_EQ(log_sink_add_callback(mSink, onLineToo) | log_sink_add_callback(mSink, onLine), 0);
    EXPECT_EQ(written("x"), " callback x\n second x\n");
    EXPECT_EQ(log_sink_remove_callback(mSink, onLine) | log_sink_remove_callback(mSink, onLine), 0);
    EXPECT_EQ(written("x"), " second x\n");
}

TEST_F(LogSink, KeepsTheNameOfAFileThatDoesNotOpen) {
    char* path = nullptr;
    char* mode = nullptr;
    EXPECT_EQ(log_sink_open_file(mSink, "/tmp/none/log", "a"), 1);
    EXPECT_EQ(log_sink_get_file(mSink, &path, &mode), 0);
    EXPECT_EQ(std::string(path) + mode, "/tmp/none/loga");
    EXPECT_EQ(log_sink_open_file(mSink, path, mode), 1) << "with the sink's own texts";
    EXPECT_EQ(log_sink_open_file(mSink, "/tmp/sink.log", "w"), 0);

    // Attaching closes the file; the attached stream stays open when the sink goes.
    FILE* const attached = recorder(" attached ");
    FILE* stream = nullptr;
    EXPECT_EQ(log_sink_attach_stream(mSink, attached) | log_sink_get_stream(mSink, &stream), 0);
    EXPECT_EQ(stream, attached);
    EXPECT_EQ(log_sink_get_file(mSink, &path, nullptr), 0);
    EXPECT_EQ(path, nullptr);
    log_sink_destroy(std::exchange(mSink, nullptr));
    EXPECT_EQ(fclose(attached), 0);
}

TEST_F(LogSink, RefusesNull) {
    EXPECT_EQ(
        log_sink_set_level(nullptr, 0) & log_sink_get_level(mSink, nullptr) &
            log_sink_open_file(nullptr, "log", "a") & log_sink_open_file(mSink, "log", nullptr) &
            log_sink_open_file(mSink, nullptr, "a") & log_sink_close_file(nullptr) &
            log_sink_attach_stream(nullptr, stdout) & log_sink_get_stream(mSink, nullptr) &
            log_sink_get_file(nullptr, nullptr, nullptr) & log_sink_flush(nullptr) &
            log_sink_add_callback(nullptr, onLine) & log_sink_remove_callback(nullptr, onLine),
        1);
    EXPECT_EQ(log_sink_destroy(nullptr), 0);
}

}  // namespace

#include <mediacheckd/vcore/log_sink.h>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/time.h>
#include <unistd.h>

#include <ctime>
#include <utility>

#include "tests/support/captured_sink.h"

namespace {

// What the clock reads while it is not 0.
int64_t clockReads = 0;

void onLine(const char* line) {
    CapturedSink::keep("too ", line);
}

// A stream whose flushed writes are kept after its name.
FILE* recorder(const char* name) {
    const auto write = [](void* cookie, const char* bytes, size_t size) {
        CapturedSink::keep(static_cast<const char*>(cookie), std::string(bytes, size));
        return static_cast<ssize_t>(size);
    };
    return fopencookie(const_cast<char*>(name), "w", {nullptr, write, nullptr, nullptr});
}

std::string written(log_sink_t* sink, const std::string& message) {
    EXPECT_EQ(log_sink_printf(sink, 3, 1, "%s", message.c_str()), 0);
    return CapturedSink::take();
}

}  // namespace

// The clock of this program. As the system's, it fails with a time that does not fit.
extern "C" int gettimeofday(timeval* now, void*) noexcept {
    timespec real{};
    clock_gettime(CLOCK_REALTIME, &real);
    *now = {real.tv_sec, real.tv_nsec / 1000};
    if (clockReads != 0) {
        *now = {static_cast<time_t>(clockReads), 987654};
    }
    return now->tv_sec == clockReads || clockReads == 0 ? 0 : -1;
}

namespace {

TEST(LogSink, FiltersByCategoryThresholdAndLevelMask) {
    struct {
        uint32_t category, categoryMask, threshold, levelMask;
        const char* passing;  // of levels 0, 1, 2, 8, 16, 32 and the highest bit
    } const cases[] = {{3, 0xFF, 0, 0, "y------"}, {3, 0xFF, 8, 0, "yyyy---"},
                       {4, 3, 32, 0, "-------"},   {4, 6, 8, 0, "yyyy---"},
                       {3, 2, 0, 0x20, "y----y-"}, {3, 2, 1, 0x1000000A, "yyyy---"},
                       {3, 0, 8, 0x3F, "-------"}, {3, 1, 0x80000000, 0, "yyyyyyy"}};
    const CapturedSink sink;
    for (const auto& c : cases) {
        log_sink_set_category_mask(sink, c.categoryMask);
        log_sink_set_level(sink, c.threshold);
        log_sink_set_level_mask(sink, c.levelMask);
        std::string passing;
        for (const uint32_t level : {0U, 1U, 2U, 8U, 16U, 32U, 0x80000000U}) {
            EXPECT_EQ(log_sink_printf(sink, c.category, level, "text"), 0);
            passing += CapturedSink::take().empty() ? '-' : 'y';
        }
        EXPECT_EQ(passing, c.passing) << &c - cases;
    }
}

TEST(LogSink, GivesWhatWasSetAndOneForNothing) {
    log_sink_t* const sink = log_sink_create();
    const struct {
        int (*set)(log_sink_t*, uint32_t);
        int (*get)(const log_sink_t*, uint32_t*);
    } fields[] = {{log_sink_set_outputs, log_sink_get_outputs},
                  {log_sink_set_level, log_sink_get_level},
                  {log_sink_set_level_mask, log_sink_get_level_mask},
                  {log_sink_set_category_mask, log_sink_get_category_mask}};
    uint32_t value = 7;
    for (const auto& [set, get] : fields) {
        EXPECT_EQ(set(sink, value + 1), 0);
        EXPECT_EQ(set(nullptr, 1) & get(nullptr, &value) & get(sink, nullptr), 1);
    }
    for (const auto& field : fields) {
        EXPECT_EQ(field.get(sink, &value), 0);
        EXPECT_EQ(value, 8u);
    }
    EXPECT_EQ(log_sink_flush(sink), 0);
    log_sink_attach_stream(sink, recorder("file "));
    FILE* stream = nullptr;
    log_sink_get_stream(sink, &stream);
    std::fputs("held", stream);
    EXPECT_EQ(log_sink_flush(sink), 0);
    EXPECT_EQ(CapturedSink::take(), "file held");
    fclose(stream);
    const int refused[] = {log_sink_flush(nullptr),
                           log_sink_close_file(nullptr),
                           log_sink_open_file(nullptr, "/tmp/x", "a"),
                           log_sink_open_file(sink, nullptr, "a"),
                           log_sink_open_file(sink, "/tmp/x", nullptr),
                           log_sink_attach_stream(nullptr, stdout),
                           log_sink_get_file(nullptr, nullptr, nullptr),
                           log_sink_get_stream(nullptr, &stream),
                           log_sink_get_stream(sink, nullptr),
                           log_sink_add_callback(nullptr, onLine),
                           log_sink_remove_callback(nullptr, onLine)};
    EXPECT_THAT(refused, testing::Each(1));
    EXPECT_EQ(log_sink_destroy(sink) | log_sink_destroy(nullptr), 0);
}

TEST(LogSink, EndsEachLineWithOneNewline) {
    const CapturedSink sink;
    for (const char* const text : {"text\n", "a\nb\n\n", "\n", "100%\n"}) {
        EXPECT_EQ(written(sink, text), text);
    }
    for (std::string text(470, 'x'); text.size() < 520; text += 'x') {
        EXPECT_EQ(written(sink, text), text + '\n');
        EXPECT_EQ(written(sink, text + '\n'), text + '\n');
    }
    EXPECT_EQ(log_sink_printf(sink, 3, 1, "%s", "") & log_sink_printf(sink, 3, 1, nullptr), 1);
    EXPECT_EQ(log_sink_printf(nullptr, 3, 1, "text") & log_sink_set_level(nullptr, 0), 1);
    EXPECT_EQ(CapturedSink::take(), "");
}

TEST(LogSink, StampsLinesWithLocalTime) {
    const auto stamp = [](time_t second) {
        char text[64];
        return std::string(text, strftime(text, sizeof text, "%FT%T", localtime(&second)));
    };
    const CapturedSink sink;
    for (const char* zone : {"XYZ-05:30", "XYZ-07:30", ":/tmp/zone", "UTC0"}) {
        setenv("TZ", zone, 1);
        const time_t before = time(nullptr);
        log_sink_printf(sink, 3, 1, "text");
        const std::string& line = CapturedSink::lastLine();
        EXPECT_TRUE(line > stamp(before) && line < stamp(time(nullptr) + 1)) << zone << line;
    }
    clockReads = 2524608000;
    log_sink_printf(sink, 3, 1, "text");
    EXPECT_TRUE(CapturedSink::lastLine().starts_with("2050-01-01T00:00:00.987 "));
    clockReads = 0;
    unsetenv("TZ");
}

TEST(LogSink, WritesToTheSelectedOutputsInOrderEachFlushed) {
    const CapturedSink sink;
    log_sink_attach_stream(sink, recorder("file "));
    EXPECT_FALSE(log_sink_add_callback(sink, onLine) || log_sink_add_callback(sink, onLine));
    FILE* const realOut = std::exchange(stdout, recorder("out "));
    FILE* const realErr = std::exchange(stderr, recorder("err "));
    std::string received;
    for (const uint32_t outputs : {0U, 1U, 2U, 4U, 8U, 15U}) {
        log_sink_set_outputs(sink, outputs);
        received += written(sink, "x") + '|';
    }
    fclose(std::exchange(stdout, realOut));
    fclose(std::exchange(stderr, realErr));
    EXPECT_EQ(received, "|out x\n|err x\n|file x\n|x\ntoo x\n|out x\nerr x\nfile x\nx\ntoo x\n|");
    log_sink_close_file(sink);
    log_sink_set_outputs(sink, LOG_OUT_CALLBACK);
    EXPECT_FALSE(log_sink_remove_callback(sink, onLine) || log_sink_remove_callback(sink, onLine));
    EXPECT_EQ(written(sink, "x"), "x\n");
}

TEST(LogSink, ShowsALineWithWhatStdioHeldBefore) {
    const CapturedSink sink;
    log_sink_set_outputs(sink, LOG_OUT_STDOUT);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const auto size = static_cast<size_t>(fcntl(ends[1], F_SETPIPE_SZ, 4096));
    std::string text(size, ' ');
    const auto received = [&] {
        return text.substr(0, static_cast<size_t>(read(ends[0], text.data(), size)));
    };
    FILE* const realOut = std::exchange(stdout, fdopen(ends[1], "w"));
    std::fputs("before ", stdout);
    written(sink, "x");
    std::string all = received() + '|';
    all.append(1, write(ends[1], text.data(), size) == static_cast<ssize_t>(size) ? '|' : '-');
    written(sink, "nobody reads");
    received();
    written(sink, "y");
    all += received();
    fclose(std::exchange(stdout, realOut));
    EXPECT_THAT(all, testing::MatchesRegex("before [^ ]* x\n[|]{2}[^ ]* nobody reads\n[^ ]* y\n"));
}

TEST(LogSink, KeepsTheNameOfAFileThatDoesNotOpen) {
    char* path = nullptr;
    char* mode = nullptr;
    FILE* stream = nullptr;
    FILE* const attached = recorder("");
    {
        const CapturedSink sink;
        EXPECT_EQ(log_sink_open_file(sink, "/tmp/none/log", "a"), 1);
        EXPECT_EQ(log_sink_get_file(sink, &path, &mode), 0);
        EXPECT_EQ(std::string(path) + mode, "/tmp/none/loga");
        EXPECT_EQ(log_sink_open_file(sink, path, mode), 1) << "with the sink's own texts";
        EXPECT_EQ(log_sink_open_file(sink, "/tmp/sink.log", "w"), 0);
        // Attaching closes the file; the attached stream stays open when the sink goes.
        EXPECT_FALSE(log_sink_attach_stream(sink, attached) || log_sink_get_stream(sink, &stream));
        EXPECT_EQ(log_sink_get_file(sink, &path, nullptr), 0);
        EXPECT_TRUE(path == nullptr && stream == attached);
    }
    EXPECT_EQ(fclose(attached), 0);
}

}  // namespace

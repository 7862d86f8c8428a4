// Builds one line of the log and writes it to its sink.
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>

#include "vcore/base/clock.h"
#include "vcore/base/standard_output.h"
#include "vcore/log/log_sink_private.h"
#include <mediacheckd/vcore/log_sink.h>

namespace {

constexpr std::size_t kTimestampSize = 64;
// Lines up to this size, newline and terminator included, are built without the heap.
constexpr std::size_t kShortLineSize = 512;

struct Free {
    void operator()(char* memory) const { free(memory); }
};

// One line under construction: timestamp, message and one newline.
class Line {
  public:
    Line() { stamp(); }

    // Adds the message. Returns false when it is empty or does not format, or memory runs out.
    bool setMessage(const char* format, va_list arguments);

    const char* text() const { return mLong ? mLong.get() : mShort; }

  private:
    void stamp();
    static void end(char* message);

    char mShort[kShortLineSize];
    std::unique_ptr<char, Free> mLong;
    std::size_t mMessageStart = 0;
};

void Line::stamp() {
    const timeval now = vcore::realTime();
    // Converted for each line: whoever changes the time zone sees it in the next one.
    tzset();
    tm local;
    char* rest = mShort;
    if (localtime_r(&now.tv_sec, &local) != nullptr) {
        rest += strftime(mShort, kTimestampSize, "%Y-%m-%dT%H:%M:%S", &local);
    }
    const int milliseconds = static_cast<int>(now.tv_usec / 1000);
    *rest++ = '.';
    *rest++ = static_cast<char>('0' + milliseconds / 100);
    *rest++ = static_cast<char>('0' + milliseconds / 10 % 10);
    *rest++ = static_cast<char>('0' + milliseconds % 10);
    *rest++ = ' ';
    mMessageStart = static_cast<std::size_t>(rest - mShort);
}

bool Line::setMessage(const char* format, va_list arguments) {
    // The newline has a place of its own behind the message and its terminator.
    const std::size_t room = sizeof mShort - mMessageStart - 1;
    va_list measured;
    va_copy(measured, arguments);
    const int length = vsnprintf(mShort + mMessageStart, room, format, measured);
    va_end(measured);
    if (length < 1) {
        return false;
    }
    const std::size_t size = static_cast<std::size_t>(length) + 1;
    if (size <= room) {
        end(mShort + mMessageStart);
        return true;
    }
    mLong.reset(static_cast<char*>(malloc(mMessageStart + size + 1)));
    if (mLong == nullptr) {
        return false;
    }
    memcpy(mLong.get(), mShort, mMessageStart);
    char* const message = mLong.get() + mMessageStart;
    if (vsnprintf(message, size, format, arguments) < 1) {
        return false;
    }
    end(message);
    return true;
}

// Ends the line with one newline, in place of one that the message brought. As any text, the
// message ends at its first NUL.
void Line::end(char* message) {
    std::size_t length = strlen(message);
    if (length > 0 && message[length - 1] == '\n') {
        --length;
    }
    memcpy(message + length, "\n", 2);
}

void emitTo(FILE* stream, const char* line) {
    fputs(line, stream);
    fflush(stream);
}

// Whoever reads the stream may be gone.
void emitGuarded(FILE* stream, const char* line) {
    const vcore::WriteGuard guard;
    emitTo(stream, line);
}

void emit(const log_sink_t& sink, const char* line) {
    if ((sink.outputs & LOG_OUT_STDOUT) != 0) {
        vcore::showText(line);
    }
    if ((sink.outputs & LOG_OUT_STDERR) != 0) {
        emitGuarded(stderr, line);
    }
    if ((sink.outputs & LOG_OUT_FILE) != 0 && sink.stream != nullptr) {
        (sink.ownsStream != 0 ? emitTo : emitGuarded)(sink.stream, line);
    }
    if ((sink.outputs & LOG_OUT_CALLBACK) != 0 && sink.callbacks != nullptr) {
        // By index: a callback may add or remove one.
        const auto& entries = sink.callbacks->entries;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (entries[i] != nullptr) {
                entries[i](line);
            }
        }
    }
}

int writeLine(const log_sink_t& sink, const char* format, va_list arguments) {
    Line line;
    if (!line.setMessage(format, arguments)) {
        return 1;
    }
    emit(sink, line.text());
    return 0;
}

}  // namespace

int log_sink_vprintf(log_sink_t* sink, uint32_t category, uint32_t level, const char* format,
                     va_list arguments) {
    if (sink == nullptr || format == nullptr) {
        return 1;
    }
    if (!vcore::passesFilters(*sink, category, level)) {
        return 0;
    }
    return writeLine(*sink, format, arguments);
}

int log_sink_printf(log_sink_t* sink, uint32_t category, uint32_t level, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int result = log_sink_vprintf(sink, category, level, format, arguments);
    va_end(arguments);
    return result;
}

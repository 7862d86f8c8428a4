// One of the buffers of a response, while text is appended to it.
#pragma once

#include <cstddef>
#include <string_view>

#include "libvxMediaRTOSDB/src/http/text/source_place.h"
#include "libvxMediaRTOSDB/src/http/text/text_part.h"
#include <mediacheckd/vxMediaRTOSDB/media_db_output.h>

// Where in a response a buffer is used.
enum class TextBufferKind { kPage, kDirectory, kEntry };

// Returns a zeroed buffer of a kind, for std::free; null when there is no memory.
[[nodiscard]] char* allocateText(TextBufferKind kind);

// Returns the text of a buffer whose write position is known; empty for one that is null.
[[nodiscard]] inline std::string_view textUpTo(const char* position, const char* buffer) {
    return {buffer, static_cast<size_t>(position - buffer)};
}

class TextBuffer {
  public:
    // buffer: from allocateText. position: the end of its text, kept up to date; outlives this.
    TextBuffer(TextBufferKind kind, char* buffer, char** position);
    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;

    // Appends all parts, or none of them when the text would pass the buffer's limit; it is then
    // empty.
    // place: where they come from, for the log.
    template <typename... Parts>
    void append(SourcePlace place, const Parts&... parts) {
        endAt(appendAt(end(), place, parts...));
    }

    // The same for a writer that keeps the end of the text and gives it to endAt when it is done:
    // returns where the text ends then.
    template <typename... Parts>
    [[nodiscard]] char* appendAt(char* end, SourcePlace place, const Parts&... parts) {
        const auto room = static_cast<size_t>(mLimit - end);
        if ((maxSize(parts) + ... + 0) > room) [[unlikely]] {
            const size_t size = (exactSize(parts) + ... + 0);
            if (size > room) {
                return startAnew(end, size, place);
            }
        }
        ((end = write(end, parts)), ...);
        return end;
    }

    [[nodiscard]] char* end() const { return *mPosition; }

    void endAt(char* end) {
        *mPosition = end;
        *end = '\0';
    }

    void clear() { endAt(mStart); }

    // Valid until the text changes.
    [[nodiscard]] std::string_view text() const { return textUpTo(*mPosition, mStart); }

    // Tells whether everything did fit that was appended here.
    [[nodiscard]] bool complete() const { return mComplete; }

  private:
    // Logs that parts of a size do not fit behind the end. Returns the start.
    char* startAnew(const char* end, size_t sizeOfParts, SourcePlace place);

    TextBufferKind mKind;
    char* mStart;
    char* mLimit;
    char** mPosition;
    bool mComplete = true;
};

// The buffers of an output, which must outlive this.
struct OutputTexts {
    TextBuffer page;
    TextBuffer directory;
    TextBuffer entry;

    explicit OutputTexts(vxMediaDBOutput& output);

    [[nodiscard]] bool complete() const {
        return page.complete() && directory.complete() && entry.complete();
    }
};

// The entry buffer alone.
[[nodiscard]] TextBuffer entryOf(vxMediaDBOutput& output);

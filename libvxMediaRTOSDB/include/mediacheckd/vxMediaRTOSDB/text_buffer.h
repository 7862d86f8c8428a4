// A text that grows up to a limit, in storage allocated once.
//
// What is appended is measured first. When the text would pass its limit, that is logged and
// counted, nothing is added, and the text starts anew: a response that lost text answers with
// HTTP_INTERNAL_ERROR.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <mediacheckd/vxMediaRTOSDB/source_place.h>
#include <mediacheckd/vxMediaRTOSDB/text_part.h>

// Where in a response a buffer is used.
enum class TextBufferKind {
    kPage,       // the whole list
    kDirectory,  // the files of one directory
    kEntry,      // the object of one file
};

// Characters that a buffer of each kind holds, the limit included.
constexpr size_t kPageLimit = 131072;
constexpr size_t kDirectoryLimit = 65536;
constexpr size_t kEntryLimit = 1536;

// A plain record: allocate() before its use, release() after it.
class TextBuffer {
  public:
    // Returns false when there is no memory; the buffer then stays released.
    [[nodiscard]] bool allocate(TextBufferKind kind);
    void release();

    // Appends all parts, or none of them when the text would pass its limit; it is then empty.
    // Behind the text stands a zero.
    // place: where they come from, for the log.
    template <typename... Parts>
    void append(SourcePlace place, const Parts&... parts) {
        const size_t room = mLimit - mLength;
        if ((maxSize(parts) + ... + 0) > room) [[unlikely]] {
            const size_t size = (exactSize(parts) + ... + 0);
            if (size > room) {
                startAnew(size, place);
                return;
            }
        }
        char* end = mText + mLength;
        ((end = write(end, parts)), ...);
        *end = '\0';
        mLength = static_cast<size_t>(end - mText);
    }

    void clear() {
        mLength = 0;
        mText[0] = '\0';
    }

    // Valid until the text changes.
    [[nodiscard]] std::string_view text() const { return {mText, mLength}; }

    // A moment in the buffer's life, for complete(); Mark() is its allocation.
    enum class Mark : uint32_t {};
    [[nodiscard]] Mark mark() const { return Mark{mLosses}; }

    // Tells whether everything appended since the mark did fit.
    [[nodiscard]] bool complete(Mark since = Mark()) const { return mark() == since; }

  private:
    void startAnew(size_t sizeOfParts, SourcePlace place);

    char* mText;
    size_t mLength;
    size_t mLimit;
    uint32_t mLosses;  // how often something did not fit
    TextBufferKind mKind;
};

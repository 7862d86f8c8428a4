// How the library builds the text of a buffer: allocateText before its use, releaseText after it.
#pragma once

#include "libvxMediaRTOSDB/src/http/text/source_place.h"
#include "libvxMediaRTOSDB/src/http/text/text_part.h"
#include <mediacheckd/vxMediaRTOSDB/text_buffer.h>

// Returns false when there is no memory; the buffer is zeroed then.
[[nodiscard]] bool allocateText(TextBuffer& buffer, TextBufferKind kind);
void releaseText(TextBuffer& buffer);

inline void clearText(TextBuffer& buffer) {
    buffer.length = 0;
    buffer.start[0] = '\0';
}

// Logs that parts of a size do not fit, counts it and clears the text.
void startTextAnew(TextBuffer& buffer, size_t sizeOfParts, SourcePlace place);

// Appends all parts, or none of them when the text would pass its limit; it is then empty.
// place: where they come from, for the log.
template <typename... Parts>
void appendText(TextBuffer& buffer, SourcePlace place, const Parts&... parts) {
    const size_t room = buffer.limit - buffer.length;
    if ((maxSize(parts) + ... + 0) > room) [[unlikely]] {
        const size_t size = (exactSize(parts) + ... + 0);
        if (size > room) {
            startTextAnew(buffer, size, place);
            return;
        }
    }
    char* end = buffer.start + buffer.length;
    ((end = write(end, parts)), ...);
    *end = '\0';
    buffer.length = static_cast<size_t>(end - buffer.start);
}

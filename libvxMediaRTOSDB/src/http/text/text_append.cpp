#include "libvxMediaRTOSDB/src/http/text/text_append.h"

#include <cstdlib>
#include <cstring>

#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

size_t limitOf(TextBufferKind kind) {
    switch (kind) {
        case TextBufferKind::kPage:
            return kPageLimit;
        case TextBufferKind::kDirectory:
            return kDirectoryLimit;
        case TextBufferKind::kEntry:
            return kEntryLimit;
    }
    return 0;
}

const char* baseName(const char* path) {
    const char* slash = std::strrchr(path, '/');
    return slash ? slash + 1 : path;
}

}  // namespace

bool allocateText(TextBuffer& buffer, TextBufferKind kind) {
    buffer = {};
    // Memory that comes zeroed from the kernel is not touched before it is used.
    buffer.start = static_cast<char*>(std::calloc(limitOf(kind) + 1, 1));
    if (!buffer.start) {
        return false;
    }
    buffer.limit = limitOf(kind);
    buffer.kind = kind;
    return true;
}

void releaseText(TextBuffer& buffer) {
    std::free(buffer.start);
    buffer = {};
}

void startTextAnew(TextBuffer& buffer, size_t sizeOfParts, SourcePlace place) {
    const int wouldBe = static_cast<int>(buffer.length + sizeOfParts);
    const int limit = static_cast<int>(buffer.limit);
    switch (buffer.kind) {
        case TextBufferKind::kPage:
            UTIL_LOG(UTIL_LOG_ERROR, "exceeded buffer length for vxoutput %d, %s:%d\n", wouldBe,
                     baseName(place.file), place.line);
            break;
        case TextBufferKind::kDirectory:
            UTIL_LOG(UTIL_LOG_ERROR, "%d > %d, dir buff exceeded, %s:%d\n", wouldBe, limit,
                     baseName(place.file), place.line);
            break;
        case TextBufferKind::kEntry:
            UTIL_LOG(UTIL_LOG_ERROR, "%d > %d, entry buff exceeded, %s:%d\n", wouldBe, limit,
                     baseName(place.file), place.line);
            break;
    }
    clearText(buffer);
    ++buffer.losses;
}

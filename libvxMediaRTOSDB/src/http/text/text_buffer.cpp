#include "libvxMediaRTOSDB/src/http/text/text_buffer.h"

#include <cstdlib>
#include <cstring>

#include "libvxMediaRTOSDB/src/http/text/key_opening.h"
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

char* allocateText(TextBufferKind kind) {
    // Memory that comes zeroed from the kernel is not touched before it is used.
    return static_cast<char*>(std::calloc(limitOf(kind) + kKeyOpeningCopy + 1, 1));
}

TextBuffer::TextBuffer(TextBufferKind kind, char* buffer, char** position)
    : mKind(kind), mStart(buffer), mLimit(buffer + limitOf(kind)), mPosition(position) {}

char* TextBuffer::startAnew(const char* end, size_t sizeOfParts, SourcePlace place) {
    const int wouldBe = static_cast<int>(textUpTo(end, mStart).size() + sizeOfParts);
    const int limit = static_cast<int>(limitOf(mKind));
    switch (mKind) {
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
    mComplete = false;
    return mStart;
}

OutputTexts::OutputTexts(vxMediaDBOutput& output)
    : page(TextBufferKind::kPage, output.localBuffer, &output.pagePosition),
      directory(TextBufferKind::kDirectory, output.localDirectoryBuffer, &output.directoryPosition),
      entry(entryOf(output)) {}

TextBuffer entryOf(vxMediaDBOutput& output) {
    return {TextBufferKind::kEntry, output.localEntryBuffer, &output.entryPosition};
}

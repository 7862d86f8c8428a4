#include <mediacheckd/vxMediaRTOSDB/text_buffer.h>

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

bool TextBuffer::allocate(TextBufferKind kind) {
    *this = {};
    // Memory that comes zeroed from the kernel is not touched before it is used.
    mText = static_cast<char*>(std::calloc(limitOf(kind) + 1, 1));
    if (!mText) {
        return false;
    }
    mLimit = limitOf(kind);
    mKind = kind;
    return true;
}

void TextBuffer::release() {
    std::free(mText);
    *this = {};
}

void TextBuffer::startAnew(size_t sizeOfParts, SourcePlace place) {
    const int wouldBe = static_cast<int>(mLength + sizeOfParts);
    const int limit = static_cast<int>(mLimit);
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
    clear();
    ++mLosses;
}

#include <mediacheckd/vxMediaRTOSDB/text_buffer.h>

#include <cstring>
#include <new>

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
    mText = new (std::nothrow) char[limitOf(kind) + 1]();
    if (!mText) {
        return false;
    }
    mLimit = limitOf(kind);
    mKind = kind;
    return true;
}

void TextBuffer::release() {
    delete[] mText;
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

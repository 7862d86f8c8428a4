#include <mediacheckd/vxMediaRTOSDB/text_buffer.h>

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

}  // namespace

bool TextBuffer::allocate(TextBufferKind kind) {
    *this = {};
    mText = new (std::nothrow) char[limitOf(kind) + 1]();
    if (!mText)
        return false;
    mLimit = limitOf(kind);
    mKind = kind;
    return true;
}

void TextBuffer::release() {
    delete[] mText;
    *this = {};
}

void TextBuffer::startAnew(size_t sizeOfParts) {
    const int wouldBe = static_cast<int>(mLength + sizeOfParts);
    const int limit = static_cast<int>(mLimit);
    switch (mKind) {
        case TextBufferKind::kPage:
            UTIL_LOG(UTIL_LOG_ERROR, "exceeded buffer length for vxoutput %d, %s:%d\n", wouldBe,
                     __FILE_NAME__, __LINE__);
            break;
        case TextBufferKind::kDirectory:
            UTIL_LOG(UTIL_LOG_ERROR, "%d > %d, dir buff exceeded, %s:%d\n", wouldBe, limit,
                     __FILE_NAME__, __LINE__);
            break;
        case TextBufferKind::kEntry:
            UTIL_LOG(UTIL_LOG_ERROR, "%d > %d, entry buff exceeded, %s:%d\n", wouldBe, limit,
                     __FILE_NAME__, __LINE__);
            break;
    }
    clear();
    mLosses++;
}

// Hands the entries, with their items, to the caller one by one.
#include <algorithm>
#include <array>

#include "medialist/list/item_span.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/medialist/zep_media_list.h>
#include <mediacheckd/vcore/log.h>
#include <mediacheckd/vxMediaRTOSDB/zep_queries.h>

namespace {

constexpr int32_t kNoCode = -1;

int32_t mediaCodeOf(uint32_t contentType) {
    static constexpr std::array kCodes = {
        1,        // single video
        5,        // grouped video
        1,        // chaptered video
        4,        // time-lapse video
        0,        // single photo
        2,        // burst
        3,        // time-lapse photos
        6,        // session file
        9,        // night-lapse photos
        8,        // night photo
        7,        // continuous photos
        kNoCode,  // unused
        11,       // burst video
    };
    return contentType < kCodes.size() ? kCodes[contentType] : kNoCode;
}

}  // namespace

int ZEPMediaList::getNextMedia(MediaOutput* out, std::vector<UploadRule>& rules) {
    if (!mCounted && buildEntries() < 0) {
        return kFailed;
    }
    mRules = rules;
    mCurrentGroup = kNoGroup;
    mOut = out;
    while (mCursor != entriesEnd()) {
        mItemReady = false;
        uint32_t sessionId = mSessionId;
        const int delivered = fetchEntry(&sessionId);
        if (delivered < 0) {
            return kFailed;
        }
        mCursor += std::min<ptrdiff_t>(delivered, entriesEnd() - mCursor);
        if (!enterSession(sessionId)) {
            return kSessionChanged;
        }
        if (mCurrentGroup != kNoGroup) {
            const int result = addLaterSpans();
            if (result != kItem) {
                return result;
            }
        }
        if (delivered == 0) {
            return kEnd;
        }
        if (mItemReady) {
            return kItem;
        }
    }
    return mTooMany ? kFailed : kEnd;
}

// Asks for the item of the entry at the cursor. Returns the number of items delivered, or a
// negative number.
int ZEPMediaList::fetchEntry(uint32_t* sessionId) {
    const uint32_t index = mCursor->index();
    const auto sessionFiles = static_cast<uint32_t>(mMediaStartIndex);
    VLOG_NOISE("[ZML]: Calling dbGetZEPList %p->%d\n", static_cast<const void*>(mCursor),
               signedWord(index));
    const int delivered =
        index >= sessionFiles
            ? dbGetZEPSessionFileList(1, index - sessionFiles, mToken, itemCb, this, fileCb, this,
                                      sessionId, nullptr)
            : dbGetZEPItems(1, index, mToken, itemCb, this, fileCb, this, sessionId, nullptr);
    VLOG_NOISE("[ZML]: dbGetZEPList returned %d\n", delivered);
    return delivered;
}

// Adds the files of the current group's later spans. Returns kItem, kFailed or kSessionChanged.
int ZEPMediaList::addLaterSpans() {
    const auto group = mSpanMap.find(static_cast<uint32_t>(mCurrentGroup));
    // A copy: a changed session drops the map.
    const std::vector<uint32_t> spans =
        group != mSpanMap.end() ? group->second : std::vector<uint32_t>();
    for (size_t i = 1; i < spans.size(); ++i) {
        uint32_t sessionId = mSessionId;
        if (dbGetZEPItems(1, spans[i], mToken, nullptr, nullptr, fileCb, this, &sessionId,
                          nullptr) < 0) {
            return kFailed;
        }
        if (dropChangedSession(sessionId)) {
            return kSessionChanged;
        }
    }
    return kItem;
}

void ZEPMediaList::itemCb(void* ctx, zep_item_s* item) {
    auto& list = *static_cast<ZEPMediaList*>(ctx);
    if (list.matchRules(item, list.mRules) == 0 ||
        (isSpan(*item) && !list.enterGroup(item->group_number))) {
        return;
    }
    const int32_t code = mediaCodeOf(item->content_type);
    list.mItemReady = code != kNoCode && list.mOut != nullptr;
    if (code == kNoCode) {
        VLOG_WARNING("[ZML]: ZEPMediaList::%s : unknown item type: %d\n", "itemCb",
                     signedWord(item->content_type));
    }
    if (list.mItemReady) {
        list.mOut->text1.clear();
        list.mOut->text2.clear();
        list.mOut->mediaCode = code;
    }
}

// Returns whether the entry at the cursor stands for the group; a folded span does not.
bool ZEPMediaList::enterGroup(uint32_t groupNumber) {
    const std::vector<uint32_t>* const spans = spansOf(groupNumber, "itemCb");
    if (spans == nullptr) {
        return true;
    }
    // Outside of a walk there is no entry at the cursor.
    if (!mCounted || mCursor >= entriesEnd() || spans->front() != mCursor->index()) {
        return false;
    }
    mCurrentGroup = static_cast<int32_t>(groupNumber);
    return true;
}

void ZEPMediaList::fileCb(void* ctx, char* dirName, char* fileName) {
    auto& list = *static_cast<ZEPMediaList*>(ctx);
    if (!list.mItemReady) {
        return;
    }
    std::string path = pathPrefix;
    if (dirName != nullptr) {
        path.append(dirName).push_back('/');
        if (fileName != nullptr) {
            path += fileName;
        }
    }
    list.mOut->files.push_back(std::move(path));
}

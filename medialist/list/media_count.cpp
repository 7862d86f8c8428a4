// Counts the candidates and keeps an entry of each.
#include <utility>

#include "medialist/list/item_span.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/medialist/zep_media_list.h>
#include <mediacheckd/vcore/log.h>
#include <mediacheckd/vcore/tracer.h>
#include <mediacheckd/vxMediaRTOSDB/zep_queries.h>

namespace {

constexpr uint32_t kPageSize = 15;
constexpr uint32_t kStatusFolded = 5;

}  // namespace

int ZEPMediaList::getMediaCount(std::vector<UploadRule>& rules) {
    mRules = rules;
    mCurrentCount = 0;
    mIndex = 0;
    const int32_t countedStart = mMediaStartIndex;
    mMediaStartIndex = 0;
    const bool countedTooMany = std::exchange(mTooMany, false);
    if (!mCounted) {
        reset();
        mSessionValid = false;
    }
    const vcore::Tracer trace(vcore::kCategoryDaemon, vcore::kLevelTrace,
                              "int ZEPMediaList::getMediaCount(std::vector<UploadRule>&)");

    const int result = countLists();
    if (result < 0) {
        mMediaStartIndex = countedStart;  // what was counted before can still be walked
        mTooMany = countedTooMany;
        return result;
    }
    if (!mCounted) {
        rewind();
    }
    mCounted = true;
    return mCurrentCount;
}

// Counts without rules: nothing matches. Returns 0 or a negative number.
int ZEPMediaList::buildEntries() {
    std::vector<UploadRule> none;
    return getMediaCount(none);
}

// Returns 0 when both lists have been read to their end, else a negative number.
int ZEPMediaList::countLists() {
    int delivered = 0;
    do {
        VLOG_NOISE("[ZML]: Calling dbGetZEPList index=%d, mMediaStartIndex:%d, mCurrentCount:%d\n",
                   signedWord(mIndex), mMediaStartIndex, mCurrentCount);
        delivered = countPage(dbGetZEPItems);
    } while (delivered > 0);
    if (delivered < 0 || mTooMany) {
        mMediaStartIndex = static_cast<int32_t>(mIndex);
        return delivered;
    }

    mMediaStartIndex = static_cast<int32_t>(mIndex);
    do {
        VLOG_NOISE("[ZML]: Calling dbGetZEPSessionFileList index=%d, mMediaStartIndex:%d\n",
                   signedWord(mIndex), mMediaStartIndex);
        delivered = countPage(dbGetZEPSessionFileList);
    } while (delivered > 0);
    return delivered;
}

// Returns the number of items delivered, or a negative number.
int ZEPMediaList::countPage(PageQuery query) {
    const uint32_t first = mIndex;
    uint32_t sessionId = mSessionId;
    const int delivered = query(kPageSize, first - static_cast<uint32_t>(mMediaStartIndex), mToken,
                                countCb, this, nullptr, nullptr, &sessionId, nullptr);
    if (delivered < 0) {
        return delivered;
    }
    if (!enterSession(sessionId)) {
        return -1;
    }
    if (mTooMany) {
        VLOG_ERROR("[ZML]: countPage: More than %d items, the others are left out.\n",
                   signedWord(kMaxItems));
        return 0;
    }
    // A page that claims items and brings none would be asked for again and again.
    if (delivered > 0 && mIndex == first) {
        VLOG_ERROR("[ZML]: countPage: A page of %d items has none.\n", delivered);
        return -1;
    }
    return delivered;
}

void ZEPMediaList::countCb(void* ctx, zep_item_s* item) {
    auto& list = *static_cast<ZEPMediaList*>(ctx);
    if (list.mIndex >= kMaxItems) {
        list.mTooMany = true;
        return;
    }
    if (!list.mCounted) {
        list.mEntries.emplace_back(*item, list.mIndex);
    }
    const bool candidate = !isSpan(*item) || list.registerSpan(*item);
    if (candidate && list.matchRules(item, list.mRules) == 1) {
        ++list.mCurrentCount;
    }
    ++list.mIndex;
}

// Returns whether the item is the first span of its group. While the list is being built, a later
// span is folded into the first one's entry and set aside in the database.
bool ZEPMediaList::registerSpan(const zep_item_s& item) {
    if (mCounted) {
        const std::vector<uint32_t>* const spans = spansOf(item.group_number, "countCb");
        return spans != nullptr && spans->front() == mIndex;
    }

    const auto [group, isNew] = mSpanMap.try_emplace(item.group_number);
    std::vector<uint32_t>& spans = group->second;
    spans.push_back(mIndex);
    if (isNew) {
        return true;
    }
    foldIntoFirst(spans.front());
    if (dbSetZEPUploadStatus(item.dir_name, item.file_name, kStatusFolded, mToken) != 0) {
        VLOG_ERROR("[ZML]: countCb: Unable to set upload status.\n");
    }
    return false;
}

// Folds the last entry into that of the group's first span. After a reset in the middle of a count
// the entries do not start at index 0: the distance counts.
void ZEPMediaList::foldIntoFirst(uint32_t firstIndex) {
    const uint32_t distance = mIndex - firstIndex;
    if (distance < mEntries.size()) {
        mEntries[mEntries.size() - 1 - distance].fold(mEntries.back());
    }
}

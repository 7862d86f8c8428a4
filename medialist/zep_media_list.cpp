#include "medialist/zep_media_list.h"

std::string ZEPMediaList::pathPrefix = "/tmp/fuse_d/DCIM/";
std::vector<UploadRule> ZEPMediaList::kDefaultUploadRules;

void ZEPMediaList::rewind() {
    mCursor = mEntries.data();
    mItemReady = false;
    mSessionValid = false;
    mOut = nullptr;
}

void ZEPMediaList::reset() {
    mSpanMap.clear();
    mEntries.clear();
    mCounted = false;
}

// Every reply's session id is checked here; a list of another session is dropped.
bool ZEPMediaList::sessionChanged(uint32_t sessionId) {
    if (!mSessionValid || sessionId == mSessionId) {
        return false;
    }
    reset();
    return true;
}

// Makes the reply's session the list's own, unless it has changed.
bool ZEPMediaList::enterSession(uint32_t sessionId) {
    if (sessionChanged(sessionId)) {
        return false;
    }
    mSessionId = sessionId;
    mSessionValid = true;
    return true;
}

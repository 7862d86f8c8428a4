#include <mediacheckd/medialist/zep_media_list.h>

#include "vcore/base/signed_word.h"
#include <mediacheckd/vcore/log.h>

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

// Every reply's session id is checked here. Returns whether the list was dropped, as one of another
// session is.
bool ZEPMediaList::dropChangedSession(uint32_t sessionId) {
    if (!mSessionValid || sessionId == mSessionId) {
        return false;
    }
    reset();
    return true;
}

// Makes the reply's session the list's own, unless it has changed.
bool ZEPMediaList::enterSession(uint32_t sessionId) {
    if (dropChangedSession(sessionId)) {
        return false;
    }
    mSessionId = sessionId;
    mSessionValid = true;
    return true;
}

// Returns null for a group that was not counted, after logging that in the caller's name.
const std::vector<uint32_t>* ZEPMediaList::spansOf(uint32_t groupNumber, const char* caller) const {
    const auto group = mSpanMap.find(groupNumber);
    if (group == mSpanMap.end()) {
        VLOG_ERROR("[ZML]: %s: Missing group in span map: %d\n", caller, signedWord(groupNumber));
        return nullptr;
    }
    return &group->second;
}

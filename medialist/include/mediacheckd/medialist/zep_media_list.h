// The media on the camera's card as candidates for automatic upload.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <mediacheckd/medialist/media_entry.h>
#include <mediacheckd/medialist/media_output.h>
#include <mediacheckd/medialist/upload_rule.h>
#include <mediacheckd/vxMediaRTOSDB/zep_queries.h>

// Other components find these by name.
#pragma GCC visibility push(default)

// One pass over the media database: count the items, sort them if need be, walk the candidates that
// the rules accept, write back what became of each.
//
//   ZEPMediaList list;
//   if (list.getMediaCount(rules) > 0 && list.sort(nullptr) == 0) {
//       MediaOutput item;
//       for (; list.getNextMedia(&item, rules) == ZEPMediaList::kItem; item = {})
//           upload(item.files);
//   }
//
// The list belongs to one session of the database. Each reply's session is compared with that of
// the reply before, except for the first reply of a first count and the first one after it, after a
// sort or a rewind. When it is
// another one, the database has changed: the list drops what it counted, the operation fails, and
// the next one counts afresh.
//
// Every operation that asks the database blocks until the answer is there. A list is used from one
// thread; it can be neither copied nor moved, since its address is the token of its requests.
class ZEPMediaList {
  public:
    // Results of getNextMedia.
    static constexpr int kItem = 0;
    static constexpr int kFailed = 1;
    static constexpr int kEnd = 2;
    static constexpr int kSessionChanged = 3;

    // The directory under which the database's directories lie, with its final '/'.
    static std::string pathPrefix;
    // The empty list, for callers that count only to build the entries. The list itself does not
    // read it: who fills it changes no result.
    static std::vector<UploadRule> kDefaultUploadRules;

    ZEPMediaList() = default;
    ZEPMediaList(const ZEPMediaList&) = delete;
    ZEPMediaList& operator=(const ZEPMediaList&) = delete;

    // Puts the walk back to the first entry; the next reply sets the session anew.
    void rewind();

    // Drops what was counted. The next operation that needs it counts again.
    void reset();

    // Asks the database how many items each of its 32 histogram buckets holds, prints the counts on
    // standard output and tests the buckets that the mask selects, bit 0 to 4 for bucket 0 to 4;
    // higher bits select nothing. Drops what was counted.
    // Returns 1 when a selected bucket holds an item, 0 when none does, -1 when the database cannot
    // be reached (nothing is printed then).
    [[nodiscard]] int matchHistogram(int mask);

    // The items that a list can tell apart: an entry's index has 18 bits.
    static constexpr uint32_t kMaxItems = 1U << 18;

    // Reads the whole database and counts the items that the rules accept. The first count builds
    // the list: it folds the later spans of each group of type 6 or 8 into the group's first entry
    // and marks them in the database with upload status 5. A list that is built already keeps its
    // entries and their order; only the matches are counted anew. Of a database with more than
    // kMaxItems items the first ones are counted, which is logged as an error.
    // Returns the number of matches, or a negative number: the database client's, or -1 when the
    // database has changed or claims items that it does not bring.
    [[nodiscard]] int getMediaCount(std::vector<UploadRule>& rules);

    // Puts the entries into the order that a sort-rules document describes (its form:
    // mediacheckd/medialist/sort_rules.h; null: newest day first, within a day the smallest first),
    // and the walk back to the first of them. Counts first when the list is not built. Returns 0;
    // -1 when the document is invalid, with order and walk of a list that was built as before; or
    // the negative result of the failed count.
    [[nodiscard]] int sort(const char* json);

    // Walks to the next entry that the rules accept and adds its files to out, which stays the
    // caller's. Counts first when the list is not built.
    // Returns kItem with an item in out; kEnd after the last one, and where the database counts no
    // item for an entry, which the next call asks for again (one that is counted and does not come
    // is passed over); kSessionChanged when the database has changed; kFailed when it cannot be
    // reached, when a page is invalid, behind the last entry of a database with more than kMaxItems
    // items or when the count fails (also for a changed session), with the walk at the entry it has
    // come to: when the later span of a group fails, behind the group. Without kItem, out is not to
    // be relied on.
    [[nodiscard]] int getNextMedia(MediaOutput* out, std::vector<UploadRule>& rules);

    // Writes the upload status of one file, which later counts and histograms show.
    // path: 8 characters of directory, '/', 12 characters of file name, without pathPrefix.
    // Returns 0, also when the database refuses the write (its client logs that); -1 when the path
    // has another form; or the database client's negative result.
    [[nodiscard]] int setUploadStatus(const std::string& path, int status);

    // Returns 1 when the rules accept the item, else 0.
    [[nodiscard]] int matchRules(zep_item_s* item, std::vector<UploadRule>& rules);

    // What the database client calls for each item of a count, and for each item and file of a step
    // of the walk. ctx: the list.
    static void countCb(void* ctx, zep_item_s* item);
    static void itemCb(void* ctx, zep_item_s* item);
    static void fileCb(void* ctx, char* dirName, char* fileName);

  private:
    using PageQuery = decltype(&dbGetZEPItems);
    static constexpr int32_t kNoGroup = -1;

    int buildEntries();
    bool dropChangedSession(uint32_t sessionId);
    bool enterSession(uint32_t sessionId);
    int countLists();
    int countPage(PageQuery query);
    bool registerSpan(const zep_item_s& item);
    void foldIntoFirst(uint32_t firstIndex);
    const std::vector<uint32_t>* spansOf(uint32_t groupNumber, const char* caller) const;
    void logEntries() const;
    const MediaEntry* entriesEnd() const { return mEntries.data() + mEntries.size(); }
    int fetchEntry(uint32_t* sessionId);
    int addLaterSpans();
    bool enterGroup(uint32_t groupNumber);

    MediaEntry* mCursor = nullptr;  // next entry of the walk
    uint32_t mIndex = 0;            // database index of the item being counted
    bool mItemReady = false;        // the current step of the walk has produced an item
    MediaOutput* mOut = nullptr;    // the caller's record of the current step
    uint32_t mSessionId = 0;        // last one seen
    bool mSessionValid = false;     // mSessionId holds a value to compare with
    void* mToken = this;            // of every request
    std::vector<UploadRule> mRules;
    int32_t mCurrentCount = 0;         // counted items that the rules accept
    int32_t mMediaStartIndex = 0;      // index at which the session files start
    int32_t mCurrentGroup = kNoGroup;  // group of the item that the current step produced
    bool mCounted = false;             // mEntries and mSpanMap are complete
    // Database indices of the spans of each group of type 6 or 8, the first span first.
    std::map<uint32_t, std::vector<uint32_t>> mSpanMap;
    std::vector<MediaEntry> mEntries;
    bool mTooMany = false;  // the database has more than kMaxItems items
};

#pragma GCC visibility pop

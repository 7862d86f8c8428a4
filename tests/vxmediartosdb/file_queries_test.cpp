// The queries about one file: what they find in any reply, and what they log.
#include <mediacheckd/vxMediaRTOSDB/file_queries.h>

#include <gmock/gmock.h>

#include <cstring>
#include <map>
#include <set>

#include "libvxMediaRTOSDB/src/upload/video_duration.h"
#include "tests/vxmediartosdb/reply_sweep.h"
#include <mediacheckd/vxMediaRTOSDB/response_queries.h>

namespace {

using namespace scripted;
using FileQueries = QueryTest;

constexpr const char* kDirectory = "100VMEDI";
constexpr const char* kFile = "VXMF0012.MP4";
constexpr const char* kBoth = "100VMEDIVXMF0012.MP4";
constexpr db_gumi kGumi = {{0xA5, 1, 2, 3}};
const std::set<uint32_t> kVideos = {0, 1, 2, 3, 12};
const std::set<uint32_t> kPhotoGroups = {5, 6, 8, 10};
const std::set<uint32_t> kGroups = {1, 2, 5, 6, 8, 10};

struct Outputs {
    db_item_record item;
    db_group_info group;
    db_video_specific_info video;
    db_more_info moreInfo;
    db_gumi gumi, parent;
    char fs[20];
    uint8_t mask[kMemberMaskSize], highlightMask[kMemberMaskSize];
    uint32_t highlights[4];

    Outputs() { std::memset(this, 0xEE, sizeof *this); }
    bool operator==(const Outputs& other) const { return !std::memcmp(this, &other, sizeof other); }
};

constexpr auto askItem = [](Outputs& out) { return getContentInfo(kBoth, &out.item); };
constexpr auto askName = [](Outputs& out) { return getContentInfoByGUMI(&kGumi, out.fs); };
constexpr auto askGumi = [](Outputs& out) { return getFileGUMI(kBoth, &out.gumi, &out.parent); };
constexpr auto askMoreInfo = [](Outputs& out) { return getMoreInfo(kBoth, &out.moreInfo); };
constexpr auto askGroup = [](Outputs& out) {
    return getGroupContentInfo(kBoth, &out.group, &out.item, out.mask, out.highlightMask);
};
constexpr auto askVideo = [](Outputs& out) {
    return getVideoSpecificInfo(kBoth, &out.video, &out.item, out.highlights, 4);
};

// The response queries, on a connection that is the caller's.

rtosConnection connection;
uint8_t buffer[1500];

// A pointer that a response query sets. What it points to then is copied.
template <typename Record>
class Found {
  public:
    explicit Found(Record& output) : mOutput(output) {}
    ~Found() {
        if (mFound) {
            mOutput = *mFound;
        }
    }
    operator const Record**() { return &mFound; }

  private:
    Record& mOutput;
    const Record mUnset = {};
    const Record* mFound = &mUnset;
};

// Asks a response query that finds these outputs.
template <auto query, auto... outputs>
int askResponse(Outputs& out) {
    return query(&connection, kDirectory, kFile, buffer, Found(out.*outputs)...);
}
constexpr auto askItemResponse = askResponse<getContentInfoResponse, &Outputs::item>;
constexpr auto askMoreInfoResponse = askResponse<getMoreInfoResponse, &Outputs::moreInfo>;
constexpr auto askVideoResponse =
    askResponse<getVideoSpecificInfoResponse, &Outputs::item, &Outputs::video>;
constexpr auto askGumiResponse =
    askResponse<getFileGUMIResponse, &Outputs::item, &Outputs::gumi, &Outputs::parent>;
constexpr auto askWrite = [](Outputs&) {
    return getWriteUploadStatusResponse(&connection, kDirectory, kFile, buffer, 7);
};
constexpr auto askDuration = [](Outputs&) {
    uint32_t duration = kUntouched;
    (void)getVideoDuration(kDirectory, kFile, &duration);
    return static_cast<int>(duration);
};

// A reply as it is received: bytes that did not come read as zero.
struct Received {
    explicit Received(const Bytes& reply) : size(reply.size()), bytes(reply) { bytes.resize(1500); }

    uint32_t word(size_t offset) const { return wordAt(bytes, offset); }
    // Copies a part to an output. Returns false, and copies nothing, when it did not all come.
    bool part(void* output, uint64_t offset, uint64_t length) const {
        if (offset + length > size) {
            return false;
        }
        std::memcpy(output, bytes.data() + offset, static_cast<size_t>(length));
        return true;
    }

    // What each direct query must copy, and whether it must succeed.
    bool item(Outputs& out) const { return part(&out.item, 20, 76); }
    bool name(Outputs& out) const { return part(out.fs, 20, 20); }
    bool moreInfo(Outputs& out) const { return part(&out.moreInfo, 20, 28); }
    bool gumi(Outputs& out) const {
        if (!(word(56) & 1) || !part(&out.parent, 112, 16)) {
            out.parent = {};
        }
        return part(&out.gumi, 96, 16);
    }
    bool group(Outputs& out) const {
        const uint32_t distance = word(104) - word(100);
        const uint64_t copied = distance / 8 + 1;
        const bool hasMask = word(108) != 0;
        if (!kGroups.count(word(20)) || !item(out) || !part(&out.group, 96, 24) ||
            (hasMask && !part(out.mask, 120, copied))) {
            return false;
        }
        const uint64_t next = 120 + (hasMask ? (uint64_t{distance} / 32 + 1) * 4 : 0);
        return word(52) == 0 || part(out.highlightMask, next, copied) ||
               !kPhotoGroups.count(word(20));
    }
    bool video(Outputs& out) const {
        return kVideos.count(word(20)) && item(out) && part(&out.video, 96, 24) &&
               part(out.highlights, 120, 4 * std::min(word(112), 4u));
    }

    // The HTTP status of each response query, and what it must find.
    int status() const {
        constexpr int kStatuses[] = {200, 503, 503, 404, 404};
        return size < 20 || word(4) > 4 ? 500 : kStatuses[word(4)];
    }
    int itemStatus(Outputs& out) const {
        if (status() != 200) {
            return status();
        }
        return !item(out) ? 500 : word(20) == 0xFFFFFFFF ? 404 : 200;
    }
    int videoStatus(Outputs& out) const {
        const int status = itemStatus(out);
        if (size >= 120 + 4 * uint64_t{word(112)}) {
            part(&out.video, 96, 24);
        } else if (status == 200 && word(20) <= 3) {
            return 500;
        }
        return status;
    }
    int moreInfoStatus(Outputs& out) const {
        return status() == 200 && !moreInfo(out) ? 500 : status();
    }
    int gumiStatus(Outputs& out) const {
        if (!part(&out.gumi, 96, 16)) {
            out.gumi = {};
        }
        if ((word(56) & 1) && !part(&out.parent, 112, 16)) {
            out.parent = {};
        }
        return itemStatus(out);
    }
    int writeStatus(Outputs&) const { return status(); }
    int duration(Outputs&) const {
        Outputs unused;
        return videoStatus(unused) == 200 && size >= 104 ? static_cast<int>(word(100)) : 0;
    }

    size_t size;
    Bytes bytes;
};

template <bool (Received::*copies)(Outputs&) const>
int direct(const Received& reply, Outputs& out) {
    return reply.size >= 20 && reply.word(8) != 0 && (reply.*copies)(out) ? 0 : -1;
}

const Bytes kFileSubject = text(kBoth);
const Bytes kItemReply = join({responseHeader(2, 1), itemRecord(4, kFile)});
const Bytes kChapteredReply =
    join({responseHeader(3, 1), itemRecord(2, kFile, 1), groupInfo(1, 0, 9)});
const Bytes kGroupReply =
    join({responseHeader(3, 1), itemRecord(5, kFile, 1), groupInfo(1, 1, 33, 2),
          words({0xFFFFFFF3, 0x80}), words({0x12345678, 0x9A})});
const Bytes kVideoReply = join(
    {responseHeader(4, 1), itemRecord(3, kFile), videoInfo(1500, 5), words({10, 20, 30, 40, 50})});
const Bytes kBurstVideoReply =
    join({responseHeader(4, 1), itemRecord(12, kFile), videoInfo(1500, 2), words({1, 2})});
const Bytes kNameReply = join({responseHeader(6, 1), kFileSubject});
const Bytes kGumiReply =
    join({responseHeader(7, 1), itemRecord(0, kFile, 0, 1), Bytes(16, 0xA5), Bytes(16, 0x5A)});
const Bytes kMoreInfoReply = join({responseHeader(8, 1), words({1920, 1080, 30, 1, 1, 0, 9})});
const Bytes kGumiSubject(kGumi.bytes, kGumi.bytes + 16);
const Bytes kWriteSubject = join({kFileSubject, words({7})});

struct Query {
    Bytes reply;
    int (*ask)(Outputs& out);
    std::function<int(const Received& reply, Outputs& out)> expect;  // result and outputs
    Bytes subject = kFileSubject;                                    // what the request asks about

    void judge(const Bytes& bytes) const {
        Outputs out;
        Outputs expected;
        const int result = expect(Received(bytes), expected);
        EXPECT_EQ(ask(out), result);
        EXPECT_TRUE(out == (result == 0 || result == 200 ? expected : Outputs()));
        const Bytes& request = platform.requests.at(0);
        EXPECT_EQ(request, join({words({wordAt(reply, 0), 1, wordAt(request, 8)}), subject}));
        EXPECT_EQ(platform.requests.size(), 1u);
    }
};

const std::map<std::string, Query> kQueries = {
    {"item", {kItemReply, askItem, direct<&Received::item>}},
    {"group", {kGroupReply, askGroup, direct<&Received::group>}},
    {"chaptered video", {kChapteredReply, askGroup, direct<&Received::group>}},
    {"video", {kVideoReply, askVideo, direct<&Received::video>}},
    {"name", {kNameReply, askName, direct<&Received::name>, kGumiSubject}},
    {"GUMI", {kGumiReply, askGumi, direct<&Received::gumi>}},
    {"more info", {kMoreInfoReply, askMoreInfo, direct<&Received::moreInfo>}},
    {"item response", {kItemReply, askItemResponse, &Received::itemStatus}},
    {"video response", {kVideoReply, askVideoResponse, &Received::videoStatus}},
    {"burst video response", {kBurstVideoReply, askVideoResponse, &Received::videoStatus}},
    {"GUMI response", {kGumiReply, askGumiResponse, &Received::gumiStatus}},
    {"more info response", {kMoreInfoReply, askMoreInfoResponse, &Received::moreInfoStatus}},
    {"write response", {responseHeader(9, 1), askWrite, &Received::writeStatus, kWriteSubject}},
    {"duration", {kBurstVideoReply, askDuration, &Received::duration}},
};

TEST_F(FileQueries, FindAndLogWhatCame) {
    std::set<std::string> lines;
    for (const auto& query : kQueries) {
        lines.merge(sweep(query.first, query.second.reply,
                          [&](const Bytes& reply) { query.second.judge(reply); }));
    }
    platform.logs.assign(lines.begin(), lines.end());
    for (const char* line :
         {"ERROR:error on IPC received 19, exiting\n", "ERROR:error on IPC received 135, exiting\n",
          "WARN :vxIpcReceive response status 9\n", "WARN :Tokens don't match 2147483647 ",
          "ERROR:vxIpcReceive response count_returned 0 - returning -1\n",
          "ERROR:command 4 requested 1, response returned 2, setting response returned to 1\n",
          "WARN :command 4 requested 1, response returned 2, setting response returned to 1\n",
          "ERROR:vxIpcReceive response count_returned 1 - using first\n",
          "ERROR:struct db_content_type 4 - must be video for operation\n",
          "ERROR:struct db_content_type 0 - must be group content for operation\n",
          "ERROR:error on IPC received, exiting, status 3\n",
          "ERROR:Invalid response size (95), discarding\n",
          "WARN :Insufficient response size (96), invalidating GUMIs\n",
          "WARN :Invalid content type (-1), inferring FILE NOT_FOUND\n"}) {
        EXPECT_TRUE(platform.logged(line)) << line;
    }
    EXPECT_FALSE(platform.logged("exiting, status 4\n"));
}

TEST_F(FileQueries, RepeatAFailedExchangeOnTheCallersConnectionOnly) {
    platform.then(sendFails(), 10);
    platform.exchanges.insert(platform.exchanges.end(),
                              {reply(kVideoReply), sendFails(-5), sendFails(-5), receiveFails(-3)});
    Outputs out;
    EXPECT_EQ(askItemResponse(out), 200);
    for (const auto ask : {+askItem, +askGumi, +askItem}) {
        EXPECT_EQ(ask(out), -1);
    }
    EXPECT_EQ(platform.pauses.size(), 10u);
    for (const char* line : {"ERROR:error on IPC send -5\n", "ERROR: error on IPC send -5\n",
                             "received -3, exiting\n"}) {
        EXPECT_TRUE(platform.logged(line)) << line;
    }
    platform.initResults = {-7, -7};
    EXPECT_EQ(askItem(out), -7);
    EXPECT_EQ(askDuration(out), 0);
    EXPECT_TRUE(platform.logged("UTIL_LOG_ERROR:rtosConnectionCtor ret < 0"));
    EXPECT_EQ(platform.closed, 3);
}

TEST_F(FileQueries, TakeNullForOptionalOutputsOnly) {
    Outputs out;
    platform.then(reply(kGroupReply));
    EXPECT_EQ(getGroupContentInfo(kBoth, &out.group, &out.item, nullptr, nullptr), 0);
    platform.then(reply(kVideoReply));
    EXPECT_EQ(getVideoSpecificInfo("100V", &out.video, nullptr, nullptr, 4), 0);
    platform.then(reply(kGumiReply));
    EXPECT_EQ(getFileGUMI("100V", &out.gumi, nullptr), 0);
    EXPECT_EQ(Bytes(platform.requests.back().begin() + 12, platform.requests.back().end()),
              join({text("100V"), Bytes(16)}));

    platform.logs.clear();
    EXPECT_EQ(getContentInfo(nullptr, &out.item), -1);
    EXPECT_EQ(getContentInfo(kBoth, nullptr), -1);
    EXPECT_EQ(getGroupContentInfo(kBoth, nullptr, &out.item, nullptr, nullptr), -1);
    EXPECT_EQ(getGroupContentInfo(kBoth, &out.group, nullptr, nullptr, nullptr), -1);
    EXPECT_EQ(getVideoSpecificInfo(kBoth, nullptr, &out.item, nullptr, 0), -1);
    EXPECT_EQ(getContentInfoByGUMI(nullptr, out.fs), -1);
    EXPECT_EQ(getFileGUMI(kBoth, nullptr, &out.parent), -1);
    EXPECT_EQ(getMoreInfo(kBoth, nullptr), -1);
    EXPECT_THAT(platform.logs, testing::Each(testing::HasSubstr(":Invalid input: fs = ")));
}

}  // namespace

// The queries about one file: what they find in any reply, and what they log.
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <set>

#include "libvxMediaRTOSDB/src/file_queries.h"
#include "libvxMediaRTOSDB/src/response_queries.h"
#include "libvxMediaRTOSDB/src/video_duration.h"
#include "tests/vxmediartosdb/reply_sweep.h"

namespace {

using namespace scripted;

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
    db_gumi gumi;
    db_gumi parent;
    char fs[20];
    uint8_t mask[kMemberMaskSize];
    uint8_t highlightMask[kMemberMaskSize];
    uint32_t highlights[4];

    Outputs() { std::memset(this, 0xEE, sizeof *this); }
    bool operator==(const Outputs& other) const { return !std::memcmp(this, &other, sizeof other); }
};

int askItem(Outputs& out) {
    return getContentInfo(kBoth, &out.item);
}
int askGroup(Outputs& out) {
    return getGroupContentInfo(kBoth, &out.group, &out.item, out.mask, out.highlightMask);
}
int askVideo(Outputs& out) {
    return getVideoSpecificInfo(kBoth, &out.video, &out.item, out.highlights, 4);
}
int askName(Outputs& out) {
    return getContentInfoByGUMI(&kGumi, out.fs);
}
int askGumi(Outputs& out) {
    return getFileGUMI(kBoth, &out.gumi, &out.parent);
}
int askMoreInfo(Outputs& out) {
    return getMoreInfo(kBoth, &out.moreInfo);
}

// A reply as it is received: bytes that did not come read as zero.
struct Received {
    explicit Received(const Bytes& reply) : size(reply.size()), bytes(reply) { bytes.resize(1500); }

    uint32_t word(size_t offset) const { return wordAt(bytes, offset); }
    // Copies a part to an output. Returns false, and copies nothing, when it did not all come.
    bool part(void* output, uint64_t offset, uint64_t length) const {
        if (offset + length > size)
            return false;
        std::memcpy(output, bytes.data() + offset, static_cast<size_t>(length));
        return true;
    }

    size_t size;
    Bytes bytes;
};

// What each direct query must copy, and whether it must succeed.

bool expectItem(const Received& reply, Outputs& out) {
    return reply.part(&out.item, 20, 76);
}
bool expectGroup(const Received& reply, Outputs& out) {
    const uint32_t distance = reply.word(104) - reply.word(100);
    const uint64_t copied = distance / 8 + 1;
    uint64_t next = 120;
    if (!kGroups.count(reply.word(20)) || !expectItem(reply, out) ||
        !reply.part(&out.group, 96, 24))
        return false;
    if (reply.word(108) != 0) {
        if (!reply.part(out.mask, next, copied))
            return false;
        next += (uint64_t{distance} / 32 + 1) * 4;
    }
    return reply.word(52) == 0 || reply.part(out.highlightMask, next, copied) ||
           !kPhotoGroups.count(reply.word(20));
}
bool expectVideo(const Received& reply, Outputs& out) {
    return kVideos.count(reply.word(20)) && expectItem(reply, out) &&
           reply.part(&out.video, 96, 24) &&
           reply.part(out.highlights, 120, 4 * std::min(reply.word(112), 4u));
}
bool expectName(const Received& reply, Outputs& out) {
    return reply.part(out.fs, 20, 20);
}
bool expectGumi(const Received& reply, Outputs& out) {
    if (!(reply.word(56) & 1) || !reply.part(&out.parent, 112, 16))
        out.parent = {};
    return reply.part(&out.gumi, 96, 16);
}
bool expectMoreInfo(const Received& reply, Outputs& out) {
    return reply.part(&out.moreInfo, 20, 28);
}

template <auto ask, auto expect>
void judgeDirect(const Bytes& bytes) {
    const Received reply(bytes);
    Outputs out;
    Outputs expected;
    const bool succeeds = reply.size >= 20 && reply.word(8) != 0 && expect(reply, expected);
    EXPECT_EQ(ask(out), succeeds ? 0 : -1);
    EXPECT_TRUE(out == (succeeds ? expected : Outputs()));
}

// The response queries, on a connection that is the caller's.

rtosConnection connection;
uint8_t buffer[1500];

constexpr long kNull = -1;
long at(const void* found) {
    return found ? static_cast<const uint8_t*>(found) - buffer : kNull;
}

int statusOf(const Received& reply) {
    if (reply.size < 20)
        return 500;
    const std::map<uint32_t, int> statuses = {{0, 200}, {1, 503}, {2, 503}, {3, 404}, {4, 404}};
    const auto known = statuses.find(reply.word(4));
    return known == statuses.end() ? 500 : known->second;
}

int itemStatusOf(const Received& reply) {
    const int status = statusOf(reply);
    if (status != 200 || reply.size < 96)
        return status == 200 ? 500 : status;
    return reply.word(20) == 0xFFFFFFFF ? 404 : 200;
}

// A pointer that no query gives, so that a query which leaves it is seen.
template <typename Record>
const Record* unset() {
    return reinterpret_cast<const Record*>(buffer + 1499);
}

void judgeItem(const Bytes& bytes) {
    const Received reply(bytes);
    const int status = itemStatusOf(reply);
    auto* item = unset<db_item_record>();
    EXPECT_EQ(getContentInfoResponse(&connection, kDirectory, kFile, buffer, &item), status);
    EXPECT_EQ(at(item), status == 200 ? 20 : kNull);
}

void judgeVideo(const Bytes& bytes) {
    const Received reply(bytes);
    const bool complete = reply.size >= 120 + 4 * uint64_t{reply.word(112)};
    int status = itemStatusOf(reply);
    if (status == 200 && !complete && reply.word(20) <= 3)
        status = 500;
    auto* item = unset<db_item_record>();
    auto* video = unset<db_video_specific_info>();
    EXPECT_EQ(getVideoSpecificInfoResponse(&connection, kDirectory, kFile, buffer, &item, &video),
              status);
    EXPECT_EQ(at(item), status == 200 ? 20 : kNull);
    EXPECT_EQ(at(video), status == 200 && complete ? 96 : kNull);
}

void judgeMoreInfo(const Bytes& bytes) {
    const Received reply(bytes);
    const int status = statusOf(reply) == 200 && reply.size < 48 ? 500 : statusOf(reply);
    auto* moreInfo = unset<db_more_info>();
    EXPECT_EQ(getMoreInfoResponse(&connection, kDirectory, kFile, buffer, &moreInfo), status);
    EXPECT_EQ(at(moreInfo), status == 200 ? 20 : kNull);
}

void judgeGumi(const Bytes& bytes) {
    const Received reply(bytes);
    const int status = itemStatusOf(reply);
    auto* item = unset<db_item_record>();
    auto* gumi = unset<db_gumi>();
    auto* parent = unset<db_gumi>();
    EXPECT_EQ(getFileGUMIResponse(&connection, kDirectory, kFile, buffer, &item, &gumi, &parent),
              status);
    EXPECT_EQ(at(item), status == 200 ? 20 : kNull);
    EXPECT_EQ(at(gumi), status == 200 ? 96 : kNull);
    EXPECT_EQ(at(parent), status == 200 && reply.word(56) & 1 ? 112 : kNull);
    if (status == 200) {
        EXPECT_EQ(Bytes(buffer + 96, buffer + 128),
                  reply.size < 112 ? Bytes(32) : Bytes(&reply.bytes[96], &reply.bytes[128]));
    }
}

void judgeStatus(const Bytes& bytes) {
    EXPECT_EQ(getWriteUploadStatusResponse(&connection, kDirectory, kFile, buffer, 7),
              statusOf(Received(bytes)));
}

void judgeDuration(const Bytes& bytes) {
    const Received reply(bytes);
    const bool found = itemStatusOf(reply) == 200 &&
                       (reply.word(20) > 3 || reply.size >= 120 + 4 * uint64_t{reply.word(112)});
    uint32_t duration = kUntouched;
    getVideoDuration(kDirectory, kFile, &duration);
    EXPECT_EQ(duration, found ? reply.word(100) : 0);
}

const Bytes kFileSubject = text(kBoth);
const Bytes kItemReply = join({responseHeader(2, 1), itemRecord(4, kFile)});
const Bytes kBurstReply =
    join({responseHeader(3, 1), itemRecord(5, kFile, 1), groupInfo(1, 1, 33, 2),
          words({0xFFFFFFF3, 0x80}), words({0x12345678, 0x9A})});
const Bytes kChapteredReply =
    join({responseHeader(3, 1), itemRecord(2, kFile, 1), groupInfo(1, 0, 9)});
const Bytes kVideoReply = join(
    {responseHeader(4, 1), itemRecord(0, kFile), videoInfo(1500, 5), words({10, 20, 30, 40, 50})});
const Bytes kBurstVideoReply =
    join({responseHeader(4, 1), itemRecord(12, kFile), videoInfo(1500, 2), words({1, 2})});
const Bytes kNameReply = join({responseHeader(6, 1), kFileSubject});
const Bytes kGumiReply =
    join({responseHeader(7, 1), itemRecord(0, kFile, 0, 1), Bytes(16, 0xA5), Bytes(16, 0x5A)});
const Bytes kMoreInfoReply = join({responseHeader(8, 1), words({1920, 1080, 30, 1, 1, 0, 9})});

Query query(const char* name, const Bytes& reply, void (*judge)(const Bytes&),
            const Bytes& subject = kFileSubject) {
    return {
        name, reply, {}, [=](const Bytes& bytes) {
            judge(bytes);
            const Bytes& request = platform.requests.at(0);
            EXPECT_EQ(request, join({words({wordAt(reply, 0), 1, wordAt(request, 8)}), subject}));
            EXPECT_EQ(platform.requests.size(), 1u);
        }};
}

INSTANTIATE_TEST_SUITE_P(
    FileQueries, ReplySweep,
    testing::Values(query("item", kItemReply, judgeDirect<askItem, expectItem>),
                    query("burst", kBurstReply, judgeDirect<askGroup, expectGroup>),
                    query("chaptered video", kChapteredReply, judgeDirect<askGroup, expectGroup>),
                    query("video", kVideoReply, judgeDirect<askVideo, expectVideo>),
                    query("name of a GUMI", kNameReply, judgeDirect<askName, expectName>,
                          {kGumi.bytes, kGumi.bytes + 16}),
                    query("GUMI", kGumiReply, judgeDirect<askGumi, expectGumi>),
                    query("more info", kMoreInfoReply, judgeDirect<askMoreInfo, expectMoreInfo>),
                    query("item response", kItemReply, judgeItem),
                    query("video response", kVideoReply, judgeVideo),
                    query("burst video response", kBurstVideoReply, judgeVideo),
                    query("GUMI response", kGumiReply, judgeGumi),
                    query("more info response", kMoreInfoReply, judgeMoreInfo),
                    query("upload status response", responseHeader(9, 1), judgeStatus,
                          join({kFileSubject, words({7})})),
                    query("duration", kVideoReply, judgeDuration),
                    query("duration of a burst video", kBurstVideoReply, judgeDuration)),
    queryName);

class FileQueries : public testing::Test {
  protected:
    void SetUp() override {
        reset();
        g_logLevel = UTIL_LOG_DEBUG;
    }
    void TearDown() override { g_logLevel = UTIL_LOG_ERROR; }
};

TEST_F(FileQueries, JudgeEachContentTypeAndStatus) {
    for (uint32_t value = 0; value < 15; value++) {
        SCOPED_TRACE(value);
        Bytes video = kVideoReply;
        putWord(video, 20, value);
        Bytes group = kBurstReply;
        putWord(group, 20, value);
        Bytes status = kItemReply;
        putWord(status, 4, value);
        platform.exchanges = {reply(video), reply(group), reply(video), reply(status)};
        judgeDirect<askVideo, expectVideo>(video);
        judgeDirect<askGroup, expectGroup>(group);
        judgeVideo(video);
        judgeItem(status);
    }
}

Bytes cut(const Bytes& bytes, size_t size) {
    return {bytes.begin(), bytes.begin() + static_cast<long>(size)};
}
Bytes with(Bytes bytes, size_t offset, uint32_t value) {
    putWord(bytes, offset, value);
    return bytes;
}
int askLittle(Outputs& out) {
    return getVideoSpecificInfo("100V", &out.video, nullptr, nullptr, 4);
}
int askNoMask(Outputs& out) {
    return getGroupContentInfo(kBoth, &out.group, &out.item, nullptr, nullptr);
}

constexpr const char* kError = "UTIL_LOG_ERROR:";
constexpr const char* kWarning = "UTIL_LOG_WARN :";
constexpr const char* kDebug = "UTIL_LOG_DEBUG:";

TEST_F(FileQueries, LogAndJudgeAsOne) {
    const struct {
        int (*ask)(Outputs&);
        Exchange exchange;
        int result;
        std::string level;
        const char* log;
    } cases[] = {
        {askItem, sendFails(-5), -1, kError, "error on IPC send -5\n"},
        {askGumi, sendFails(-5), -1, kError, " error on IPC send -5\n"},
        {askName, receiveFails(-3), -1, kError, "error on IPC received -3, exiting\n"},
        {askItem, reply(cut(kItemReply, 95)), -1, kError, "error on IPC received 95, exiting\n"},
        {askVideo, reply(cut(kVideoReply, 135)), -1, kError,
         "error on IPC received 135, exiting\n"},
        {askItem, reply(kItemReply), 0, kDebug, "getContentInfo got 96 bytes\n"},
        {askGroup, reply(kBurstReply), 0, kDebug, "getGroupContentInfo got 136 bytes\n"},
        {askVideo, reply(kVideoReply), 0, kDebug, "getVideoSpecificInfo got 140 bytes\n"},
        {askName, reply(kNameReply), 0, kDebug, "getContentInfo got 40 bytes\n"},
        {askGumi, reply(kGumiReply), 0, kDebug, "getContentInfo got 128 bytes\n"},
        {askMoreInfo, reply(kMoreInfoReply), 0, kDebug, "getMoreInfo got 48 bytes\n"},
        {askItem, reply(kItemReply), 0, kDebug, "ResponseHeader: command_type 2\n"},
        {askItem, reply(kItemReply), 0, kDebug, "time 0 sec, "},
        {askItem, reply(with(kItemReply, 4, 9)), 0, kWarning, "vxIpcReceive response status 9\n"},
        {askItem, reply(with(kItemReply, 16, 77)), 0, kWarning, "Tokens don't match 77 "},
        {askItem, reply(with(kItemReply, 8, 0)), -1, kError,
         "vxIpcReceive response count_returned 0 - returning -1\n"},
        {askItem, reply(with(kItemReply, 8, 3)), 0, kError,
         "command 2 requested 1, response returned 3, setting response returned to 1\n"},
        {askItem, reply(with(kItemReply, 8, 3)), 0, kError,
         "vxIpcReceive response count_returned 1 - using first\n"},
        {askVideo, reply(with(kVideoReply, 20, 4)), -1, kError,
         "struct db_content_type 4 - must be video for operation\n"},
        {askGroup, reply(with(kBurstReply, 20, 0)), -1, kError,
         "struct db_content_type 0 - must be group content for operation\n"},
        {askLittle, reply(with(kVideoReply, 112, 0)), 0, kDebug,
         "highlights (nil), maxNumberHighlightsExpected 4, vsi->highlight_count 0 - skipping "
         "copy\n"},
        {askVideo, reply(kVideoReply), 0, kDebug,
         "maxNumberHighlightsExpected 4, vsi->highlight_count 5, only returning 4\n"},
        {askLittle, reply(cut(kVideoReply, 120)), 0, kDebug,
         "highlights (nil) - skipping highlight copy\n"},
        {askNoMask, reply(cut(kBurstReply, 120)), 0, kDebug, "getGroupContentInfo got 120 bytes\n"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.log);
        reset();
        platform.then(row.exchange);
        Outputs out;
        EXPECT_EQ(row.ask(out), row.result);
        EXPECT_TRUE(row.result == 0 || out == Outputs());
        EXPECT_TRUE(platform.logged(row.level + row.log)) << testing::PrintToString(platform.logs);
        EXPECT_EQ(platform.opened, platform.closed);
    }
    platform.requests.clear();
    Outputs out;
    EXPECT_EQ(askLittle(out), -1);
    EXPECT_EQ(cut(platform.requests[0], 32),
              join({cut(platform.requests[0], 12), text("100V"), Bytes(16)}));
    platform.initResults = {-7};
    EXPECT_EQ(askItem(out), -7);
    EXPECT_TRUE(platform.logged("UTIL_LOG_ERROR:vxIpcInit fail, ret -7\n"));
}

TEST_F(FileQueries, LogAndJudgeResponses) {
    const struct {
        void (*judge)(const Bytes&);
        Bytes reply;
        std::string level;
        const char* log;
    } cases[] = {
        {judgeItem, Bytes(19), kError, "Invalid response size (19), discarding\n"},
        {judgeItem, cut(kItemReply, 95), kError, "Invalid response size (95), discarding\n"},
        {judgeVideo, cut(kVideoReply, 139), kError, "Invalid response size (139), discarding\n"},
        {judgeMoreInfo, cut(kMoreInfoReply, 47), kError,
         "Invalid response size (47), discarding\n"},
        {judgeGumi, cut(kGumiReply, 100), kWarning,
         "Insufficient response size (100), invalidating GUMIs\n"},
        {judgeItem, with(kItemReply, 20, 0xFFFFFFFF), kWarning,
         "Invalid content type (-1), inferring FILE NOT_FOUND\n"},
        {judgeItem, with(kItemReply, 4, 3), kError, "error on IPC received, exiting, status 3\n"},
        {judgeItem, with(kItemReply, 4, 5), kError, "error on IPC received, exiting, status 5\n"},
        {judgeItem, kItemReply, kWarning, "Tokens don't match 0 "},
        {judgeItem, with(kItemReply, 8, 2), kWarning, "command 2 requested 1, response returned 2"},
        {judgeItem, kItemReply, kDebug, "         dir_name 100VMEDI\n"},
        {judgeStatus, responseHeader(9, 1), kDebug, "         file_name VXMF0012.MP4\n"},
        {judgeStatus, responseHeader(9, 1), kDebug, "         upload_status 7\n"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.log);
        reset();
        platform.then(sendFails(), 10);
        platform.then(reply(row.reply));
        row.judge(row.reply);
        EXPECT_TRUE(platform.logged(row.level + row.log)) << testing::PrintToString(platform.logs);
        EXPECT_EQ(platform.pauses.size(), 10u);
    }
    for (uint32_t status : {1u, 2u, 4u}) {
        reset();
        platform.then(reply(with(kItemReply, 4, status)));
        judgeItem(with(kItemReply, 4, status));
        EXPECT_FALSE(platform.logged(kError));
    }
    platform.initResults = {-7};
    uint32_t duration = kUntouched;
    getVideoDuration(kDirectory, kFile, &duration);
    EXPECT_EQ(duration, 0u);
    EXPECT_TRUE(platform.logged("UTIL_LOG_ERROR:rtosConnectionCtor ret < 0"));
}

TEST_F(FileQueries, RefuseNullArguments) {
    EXPECT_EQ(getContentInfo(nullptr, nullptr), -1);
    EXPECT_EQ(getGroupContentInfo(nullptr, nullptr, nullptr, nullptr, nullptr), -1);
    EXPECT_EQ(getVideoSpecificInfo(nullptr, nullptr, nullptr, nullptr, 0), -1);
    EXPECT_EQ(getContentInfoByGUMI(nullptr, nullptr), -1);
    EXPECT_EQ(getFileGUMI(nullptr, nullptr, nullptr), -1);
    EXPECT_EQ(getMoreInfo(nullptr, nullptr), -1);
    for (const char* names : {"ci", "gci = (nil), ci", "vsi", "gumi", "mi"})
        EXPECT_TRUE(
            platform.logged(std::string(":Invalid input: fs = (nil), ") + names + " = (nil)\n"));
    EXPECT_EQ(platform.opened, 0);
    const db_more_info* found = nullptr;
    EXPECT_EXIT((void)getMoreInfoResponse(&connection, kDirectory, nullptr, buffer, &found),
                testing::ExitedWithCode(255), "");
    EXPECT_EXIT((void)getMoreInfoResponse(&connection, kDirectory, kFile, buffer, nullptr),
                testing::ExitedWithCode(255), "");
}

}  // namespace

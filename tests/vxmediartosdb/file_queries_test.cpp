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
// The same without the outputs that may be null.
constexpr auto askNoMasks = [](Outputs& out) {
    return getGroupContentInfo(kBoth, &out.group, &out.item, nullptr, nullptr);
};
constexpr auto askNoHighlights = [](Outputs& out) {
    return getVideoSpecificInfo("100V", &out.video, nullptr, nullptr, 4);
};

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

    // What each direct query must copy, and whether it must succeed.
    bool item(Outputs& out) const { return part(&out.item, 20, 76); }
    bool name(Outputs& out) const { return part(out.fs, 20, 20); }
    bool moreInfo(Outputs& out) const { return part(&out.moreInfo, 20, 28); }
    bool gumi(Outputs& out) const {
        if (!(word(56) & 1) || !part(&out.parent, 112, 16))
            out.parent = {};
        return part(&out.gumi, 96, 16);
    }
    bool groupAlone(Outputs& out) const {
        return kGroups.count(word(20)) && item(out) && part(&out.group, 96, 24);
    }
    bool group(Outputs& out) const {
        const uint32_t distance = word(104) - word(100);
        const uint64_t copied = distance / 8 + 1;
        const bool hasMask = word(108) != 0;
        if (!groupAlone(out) || (hasMask && !part(out.mask, 120, copied)))
            return false;
        const uint64_t next = 120 + (hasMask ? (uint64_t{distance} / 32 + 1) * 4 : 0);
        return word(52) == 0 || part(out.highlightMask, next, copied) ||
               !kPhotoGroups.count(word(20));
    }
    bool videoAlone(Outputs& out) const {
        return kVideos.count(word(20)) && part(&out.video, 96, 24);
    }
    bool video(Outputs& out) const {
        return videoAlone(out) && item(out) &&
               part(out.highlights, 120, 4 * std::min(word(112), 4u));
    }

    // The HTTP status of a response query, without and with an item in its reply.
    int status() const {
        if (size < 20)
            return 500;
        const std::map<uint32_t, int> statuses = {{0, 200}, {1, 503}, {2, 503}, {3, 404}, {4, 404}};
        const auto known = statuses.find(word(4));
        return known == statuses.end() ? 500 : known->second;
    }
    int itemStatus() const {
        if (status() != 200 || size < 96)
            return status() == 200 ? 500 : status();
        return word(20) == 0xFFFFFFFF ? 404 : 200;
    }
    bool hasVideo() const { return size >= 120 + 4 * uint64_t{word(112)}; }

    size_t size;
    Bytes bytes;
};

template <auto ask, auto expect>
void direct(const Bytes& bytes) {
    const Received reply(bytes);
    Outputs out;
    Outputs expected;
    const bool succeeds = reply.size >= 20 && reply.word(8) != 0 && (reply.*expect)(expected);
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

// A pointer that no query gives, so that a query which leaves it is seen.
template <typename Record>
const Record* unset() {
    return reinterpret_cast<const Record*>(buffer + 1499);
}

// Checks the result of a response query and the lines that tell its reason.
void checkStatus(int result, int status, const Received& reply) {
    EXPECT_EQ(result, status);
    const std::string size = std::to_string(reply.size);
    EXPECT_EQ(platform.logged("ERROR:Invalid response size (" + size + "), discarding\n"),
              reply.size < 20 || (status == 500 && reply.status() == 200));
    const uint32_t reported = reply.size < 20 ? 0 : reply.word(4);
    EXPECT_EQ(platform.logged("ERROR:error on IPC received, exiting, status " +
                              std::to_string(static_cast<int>(reported)) + "\n @"),
              reported == 3 || reported > 4);
}

void judgeItem(const Bytes& bytes) {
    const Received reply(bytes);
    const int status = reply.itemStatus();
    auto* item = unset<db_item_record>();
    checkStatus(getContentInfoResponse(&connection, kDirectory, kFile, buffer, &item), status,
                reply);
    EXPECT_EQ(at(item), status == 200 ? 20 : kNull);
}

void judgeVideo(const Bytes& bytes) {
    const Received reply(bytes);
    int status = reply.itemStatus();
    if (status == 200 && !reply.hasVideo() && reply.word(20) <= 3)
        status = 500;
    auto* item = unset<db_item_record>();
    auto* video = unset<db_video_specific_info>();
    checkStatus(getVideoSpecificInfoResponse(&connection, kDirectory, kFile, buffer, &item, &video),
                status, reply);
    EXPECT_EQ(at(item), status == 200 ? 20 : kNull);
    EXPECT_EQ(at(video), status == 200 && reply.hasVideo() ? 96 : kNull);
}

void judgeMoreInfo(const Bytes& bytes) {
    const Received reply(bytes);
    const int status = reply.status() == 200 && reply.size < 48 ? 500 : reply.status();
    auto* moreInfo = unset<db_more_info>();
    checkStatus(getMoreInfoResponse(&connection, kDirectory, kFile, buffer, &moreInfo), status,
                reply);
    EXPECT_EQ(at(moreInfo), status == 200 ? 20 : kNull);
}

void judgeGumi(const Bytes& bytes) {
    const Received reply(bytes);
    const int status = reply.itemStatus();
    auto* item = unset<db_item_record>();
    auto* gumi = unset<db_gumi>();
    auto* parent = unset<db_gumi>();
    checkStatus(getFileGUMIResponse(&connection, kDirectory, kFile, buffer, &item, &gumi, &parent),
                status, reply);
    EXPECT_EQ(at(item), status == 200 ? 20 : kNull);
    EXPECT_EQ(at(gumi), status == 200 ? 96 : kNull);
    EXPECT_EQ(at(parent), status == 200 && reply.word(56) & 1 ? 112 : kNull);
    if (status == 200) {
        EXPECT_EQ(Bytes(buffer + 96, buffer + 128),
                  reply.size < 112 ? Bytes(32) : Bytes(&reply.bytes[96], &reply.bytes[128]));
    }
}

void judgeStatus(const Bytes& bytes) {
    const Received reply(bytes);
    checkStatus(getWriteUploadStatusResponse(&connection, kDirectory, kFile, buffer, 7),
                reply.status(), reply);
}

void judgeDuration(const Bytes& bytes) {
    const Received reply(bytes);
    const bool found = reply.itemStatus() == 200 && (reply.word(20) > 3 || reply.hasVideo());
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
    {responseHeader(4, 1), itemRecord(3, kFile), videoInfo(1500, 5), words({10, 20, 30, 40, 50})});
const Bytes kBurstVideoReply =
    join({responseHeader(4, 1), itemRecord(12, kFile), videoInfo(1500, 2), words({1, 2})});
const Bytes kNameReply = join({responseHeader(6, 1), kFileSubject});
const Bytes kGumiReply =
    join({responseHeader(7, 1), itemRecord(0, kFile, 0, 1), Bytes(16, 0xA5), Bytes(16, 0x5A)});
const Bytes kMoreInfoReply = join({responseHeader(8, 1), words({1920, 1080, 30, 1, 1, 0, 9})});

// got: what the query's log calls itself when a reply has come.
Query query(const char* name, const Bytes& reply, void (*judge)(const Bytes&), const char* got = "",
            const Bytes& subject = kFileSubject) {
    return {
        name, reply, {}, [=](const Bytes& bytes) {
            judge(bytes);
            const Bytes& request = platform.requests.at(0);
            EXPECT_EQ(request, join({words({wordAt(reply, 0), 1, wordAt(request, 8)}), subject}));
            EXPECT_EQ(platform.requests.size(), 1u);
            const std::string size = " got " + std::to_string(bytes.size()) + " bytes\n";
            EXPECT_TRUE(!*got || platform.logged(std::string("UTIL_LOG_DEBUG:") + got + size));
        }};
}

INSTANTIATE_TEST_SUITE_P(
    FileQueries, ReplySweep,
    testing::Values(
        query("item", kItemReply, direct<askItem, &Received::item>, "getContentInfo"),
        query("burst", kBurstReply, direct<askGroup, &Received::group>, "getGroupContentInfo"),
        query("chaptered video", kChapteredReply, direct<askGroup, &Received::group>),
        query("group alone", kBurstReply, direct<askNoMasks, &Received::groupAlone>),
        query("video", kVideoReply, direct<askVideo, &Received::video>, "getVideoSpecificInfo"),
        query("video alone", kVideoReply, direct<askNoHighlights, &Received::videoAlone>, "",
              join({text("100V"), Bytes(16)})),
        query("name of a GUMI", kNameReply, direct<askName, &Received::name>, "getContentInfo",
              {kGumi.bytes, kGumi.bytes + 16}),
        query("GUMI", kGumiReply, direct<askGumi, &Received::gumi>, "getContentInfo"),
        query("more info", kMoreInfoReply, direct<askMoreInfo, &Received::moreInfo>, "getMoreInfo"),
        query("item response", kItemReply, judgeItem),
        query("video response", kVideoReply, judgeVideo),
        query("burst video response", kBurstVideoReply, judgeVideo),
        query("GUMI response", kGumiReply, judgeGumi),
        query("more info response", kMoreInfoReply, judgeMoreInfo),
        query("upload status response", responseHeader(9, 1), judgeStatus, "",
              join({kFileSubject, words({7})})),
        query("duration", kVideoReply, judgeDuration),
        query("duration of a burst video", kBurstVideoReply, judgeDuration)),
    queryName);

using FileQueries = QueryTest;

Bytes cut(const Bytes& bytes, size_t size) {
    return {bytes.begin(), bytes.begin() + static_cast<long>(size)};
}
Bytes with(Bytes bytes, size_t offset, uint32_t value) {
    putWord(bytes, offset, value);
    return bytes;
}

TEST_F(FileQueries, LogWhatTheyFind) {
    g_logLevel = UTIL_LOG_DEBUG;
    constexpr auto item = direct<askItem, &Received::item>;
    constexpr auto group = direct<askGroup, &Received::group>;
    constexpr auto video = direct<askVideo, &Received::video>;
    constexpr auto videoAlone = direct<askNoHighlights, &Received::videoAlone>;
    const struct {
        void (*judge)(const Bytes&);
        Exchange exchange;
        const char* log;
    } cases[] = {
        {item, sendFails(-5), "ERROR:error on IPC send -5\n"},
        {direct<askGumi, &Received::gumi>, sendFails(-5), "ERROR: error on IPC send -5\n"},
        {item, receiveFails(-3), "ERROR:error on IPC received -3, exiting\n"},
        {item, reply(cut(kItemReply, 95)), "ERROR:error on IPC received 95, exiting\n"},
        {video, reply(cut(kVideoReply, 135)), "ERROR:error on IPC received 135, exiting\n"},
        {item, reply(kItemReply), "DEBUG:ResponseHeader: command_type 2\n"},
        {item, reply(kItemReply), "DEBUG:time 0 sec, "},
        {item, reply(with(kItemReply, 4, 9)), "WARN :vxIpcReceive response status 9\n"},
        {item, reply(with(kItemReply, 16, 77)), "WARN :Tokens don't match 77 "},
        {item, reply(with(kItemReply, 8, 0)),
         "ERROR:vxIpcReceive response count_returned 0 - returning -1\n"},
        {item, reply(with(kItemReply, 8, 3)),
         "ERROR:command 2 requested 1, response returned 3, setting response returned to 1\n"},
        {item, reply(with(kItemReply, 8, 3)),
         "ERROR:vxIpcReceive response count_returned 1 - using first\n"},
        {video, reply(with(kVideoReply, 20, 4)),
         "ERROR:struct db_content_type 4 - must be video for operation\n"},
        {group, reply(with(kBurstReply, 20, 0)),
         "ERROR:struct db_content_type 0 - must be group content for operation\n"},
        {videoAlone, reply(with(kVideoReply, 112, 0)),
         "DEBUG:highlights (nil), maxNumberHighlightsExpected 4, vsi->highlight_count 0 - skipping "
         "copy\n"},
        {video, reply(kVideoReply),
         "DEBUG:maxNumberHighlightsExpected 4, vsi->highlight_count 5, only returning 4\n"},
        {videoAlone, reply(kVideoReply), "DEBUG:highlights (nil) - skipping highlight copy\n"},
        {judgeGumi, reply(cut(kGumiReply, 100)),
         "WARN :Insufficient response size (100), invalidating GUMIs\n"},
        {judgeItem, reply(with(kItemReply, 20, 0xFFFFFFFF)),
         "WARN :Invalid content type (-1), inferring FILE NOT_FOUND\n"},
        {judgeItem, reply(kItemReply), "WARN :Tokens don't match 0 "},
        {judgeItem, reply(with(kItemReply, 8, 2)),
         "WARN :command 2 requested 1, response returned 2"},
        {judgeItem, reply(kItemReply), "DEBUG:         dir_name 100VMEDI\n"},
        {judgeStatus, reply(responseHeader(9, 1)), "DEBUG:         file_name VXMF0012.MP4\n"},
        {judgeStatus, reply(responseHeader(9, 1)), "DEBUG:         upload_status 7\n"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.log);
        reset();
        platform.then(row.exchange);
        row.judge(row.exchange.replies.empty() ? Bytes() : row.exchange.replies[0]);
        EXPECT_TRUE(platform.logged(row.log)) << testing::PrintToString(platform.logs);
        EXPECT_EQ(platform.opened, platform.closed);
    }
}

TEST_F(FileQueries, RepeatAFailedExchangeOnTheCallersConnectionOnly) {
    for (const auto judge : {judgeItem, judgeStatus}) {
        platform.then(sendFails(), 10);
        platform.then(reply(kItemReply));
        judge(kItemReply);
    }
    EXPECT_EQ(platform.pauses.size(), 20u);
    platform.initResults = {-7, -7};
    Outputs out;
    EXPECT_EQ(askItem(out), -7);
    EXPECT_TRUE(platform.logged("UTIL_LOG_ERROR:vxIpcInit fail, ret -7\n"));
    judgeDuration({});
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

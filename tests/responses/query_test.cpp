// The parsers of both kinds of query, and the decoding of their values.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "tests/support/scripted_platform.h"
#include <mediacheckd/vxMediaRTOSDB/media_list_query.h>
#include <mediacheckd/vxMediaRTOSDB/metadata_query.h>
#include <mediacheckd/vxMediaRTOSDB/query_status.h>
#include <mediacheckd/vxMediaRTOSDB/query_string.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

using scripted::platform;

// Decodes a whole value, by another way than the library.
std::string decoded(const std::string& source, bool plusToSpace) {
    std::string text;
    for (size_t i = 0; i < source.size(); ++i) {
        const std::string digits = source.substr(i + 1, 2);
        const bool escape = source[i] == '%' && digits.size() == 2 &&
                            digits.find_first_not_of("0123456789abcdefABCDEF") == digits.npos;
        if (escape) {
            text += static_cast<char>(std::stoi(digits, nullptr, 16));
        } else {
            text += source[i] == '+' && plusToSpace ? ' ' : source[i];
        }
        i += escape ? 2 : 0;
    }
    return text;
}

void expectDecodedAlike(const std::string& source) {
    for (const bool plus : {false, true}) {
        const std::string whole = decoded(source, plus);
        for (int size = 0; size < 12; ++size) {
            std::vector<char> out(static_cast<size_t>(size) + 1, 'x');
            const int length =
                urlDecode(source.data(), static_cast<int>(source.size()), out.data(), size, plus);
            const bool fits =
                source.empty() || (size >= 2 && static_cast<int>(whole.size()) < size);
            ASSERT_EQ(length, fits ? static_cast<int>(whole.size()) : -1)
                << source << " in " << size;
            const size_t kept = size >= 2 ? std::min(whole.size(), out.size() - 2) : 0;
            ASSERT_EQ(std::string(out.data(), kept), whole.substr(0, kept)) << source;
            ASSERT_EQ(out[kept], size > 0 ? '\0' : 'x') << source;
            ASSERT_EQ(out.back(), 'x') << source;
        }
    }
}

TEST(UrlDecode, AgreesWithASecondDecoder) {
    for (const char* source : {"", "%", "%4", "%41", "%zz", "%4z", "%%41", "%2541", "a+b", "%+1"}) {
        expectDecodedAlike(source);
    }
    std::mt19937 random(20240229);
    for (int i = 0; i < 4000; ++i) {
        std::string source(random() % 14, '\0');
        for (char& c : source) {
            c = i % 2 ? static_cast<char>(random()) : "%%%+aF09g"[random() % 9];
        }
        expectDecodedAlike(source);
    }
    char out[4];
    EXPECT_EQ(urlDecode("abc", -1, out, 4, 1), 0);
    EXPECT_EQ(urlDecode("abc", 3, out, -1, 1), -1);
}

TEST(FindQueryValue, Table) {
    const struct {
        const char* query;
        const char* key;
        int skip;
        int size;
        int result;
        const char* value;
    } cases[] = {
        {"t=dur", "t", 0, 8, 3, "dur"},     {"T=dur&p=1", "t", 0, 8, 3, "dur"},
        {"xt=1", "t", 0, 8, -1, ""},        {"t&t=5", "t", 0, 8, 1, "5"},
        {"a=t=1", "t", 0, 8, -1, ""},       {"t=1", "t", INT_MIN, 8, 1, "1"},
        {"t=1&t=2", "t", 2, 8, -1, ""},     {"t=1&a=&T=&t=9", "t", 1, 8, 0, ""},
        {"t=12345", "t", 0, 6, 5, "12345"}, {"t=12345", "t", 0, 5, -2, "1234"},
        {"t=", "t", 0, 1, 0, ""},           {"t=1", "t", 0, 1, -2, ""},
        {"t=1", "t", 0, 0, -2, "?"},        {"t=1&ab", "abc", 0, 8, -1, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.query);
        char value[8] = "?";
        const int length = static_cast<int>(std::strlen(c.query));
        EXPECT_EQ(findQueryValueN(c.query, length, c.key, value, c.size, c.skip), c.result);
        EXPECT_STREQ(value, c.value);
    }
    char value[8] = "?";
    EXPECT_EQ(findQueryValue("t=1", 3, "t", nullptr, 8), -2);
    EXPECT_EQ(findQueryValue("t=1", 3, nullptr, value, 8), -1);
    EXPECT_STREQ(value, "");
    EXPECT_EQ(findQueryValue(nullptr, 3, "t", value, 8), -1);
}

const std::string k63(63, 'x');
const std::string k64(64, 'x');

constexpr auto list = parseMediaListQuery;
constexpr auto metadata = parseMetadataQuery;

TEST(Queries, SetTheSettings) {
    constexpr uint32_t kAll = 0xFFFFFFFF;
    constexpr uint32_t kMetadata = 0xFFFFBFFC;
    const struct {
        int (*parse)(const char*, QuerySettings*);
        std::string query;
        uint32_t filter;
        uint32_t options;
        uint32_t mask;
        uint32_t uploadStatus = 0;
        std::string directory = {};
        std::string fileOrUnsupported = {};
    } cases[] = {
        {list, "", 0, 0xFFFFFB00, 0x81B},
        {list, "f=photos", 1, 0x200, kAll},
        {list, "F=video%00x", 2, 0x100, kAll},
        {list, "f=clips", 4, 0x300, kAll},
        {list, "f=videoclips", 4, 0x100, kAll},
        {list, "f=photoclips", 5, 0x200, kAll},
        {list, "f=highlights", 6, 0x300, kAll},
        {list, "f=videohighlights", 7, 0x100, kAll},
        {list, "f=photohighlights", 8, 0x200, kAll},
        {list, "f=groups", 10, 0x300, kAll},
        {list, "f=videogroups", 10, 0x100, kAll},
        {list, "f=photogroups", 11, 0x200, kAll},
        {list, "f=raw", 12, 0x800, kAll},
        {list, "f=none", 14, 0xF00, kAll},
        {list, "f=upload&fields=us,n", 15, 0, 0x8001},
        {list, "f=upload&STATUS=4294967295", 16, 0, 0x8000, 0xFFFFFFFF},
        {list, "f=video&status=&status=", 2, 0x100, kAll},
        {list, "fields=%22n,mod%22", 0, 0, 0x3},
        {list, "FIELDS=n,foo,,bar", 0, 0, 0x1, 0, "", "foo,bar"},
        {list, "fields=n,mod,cre,s,ls,cl,avc,prof,hi,gumi,pgumi", 0, 0, 0x37FF},
        {list, "fields=t,DNE,us,eis,wdr,pta,ao,raw,tr,mp,dur,hdr", 0, 0, 0x10FFC800},
        {list, "fields=legacy", 0, 0, 0x81B},
        {list, "fields=%22", 0, 0, 0, 0, "", "\""},
        {list, "fields=" + std::string(100, 'u') + ",n", 0, 0, 1, 0, "", std::string(100, 'u')},
        {list, "fields=" + std::string(101, 'u') + ",x,b", 0, 0, 0x800},
        {list, "fields=n%00xyzw,foo", 0, 0, 1},
        {list, "folder=&files=", 0, 0, kAll},
        {list, "f=gumi&folder=12345678%00&files=" + k63, 13, 0, kAll, 0, "12345678"},
        {metadata, "t=videoinfo&p=A/V0010001.MP4", 17, 0, kMetadata, 0, "A", "V0010001.MP4"},
        {metadata, "p=A/V0010001.MP4&t=dur&status=3x", 18, 0, kMetadata, 0, "A", "V0010001.MP4"},
        {metadata, "t=v4info&p=//12345678//V0010001.MP4/", 19, 0, kMetadata, 0, "12345678",
         "V0010001.MP4"},
        {metadata, "t=v5info&p=A%2fV0010001.360", 20, 0, kMetadata, 0, "A", "V0010001.360"},
        {metadata, "t=upload&p=A/V0010001.JPG", 21, 0, kMetadata, 0, "A", "V0010001.JPG"},
        {metadata, "t=upload&status=3&p=A/V0010001.MP4", 22, 0, kMetadata, 3, "A", "V0010001.MP4"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.query);
        QuerySettings settings;
        EXPECT_EQ(c.parse(c.query.c_str(), &settings), 200);
        EXPECT_EQ(settings.filter, c.filter);
        EXPECT_EQ(settings.rtosDBQueryOptions, c.options);
        EXPECT_EQ(settings.whitelistMask, c.mask);
        EXPECT_EQ(settings.newUploadStatus, c.uploadStatus);
        EXPECT_EQ(settings.dirName, c.directory);
        EXPECT_EQ(c.parse == list ? settings.unsupported : settings.fileName, c.fileOrUnsupported);
    }
}

TEST(Queries, Log) {
    const std::string p = "&p=100VMEDI/V0010001.MP4";
    const struct {
        int (*parse)(const char*, QuerySettings*);
        std::string query;
        int status;
        std::string message;
        std::string level = "ERROR:";
    } cases[] = {
        {list, "f=%00", 400, "Field 'f' has no value\n"},
        {list, "f=" + k64, 400, "Insufficient storage for f=" + k63 + "\n"},
        {list, "f=raw&F=raw", 400, "Field 'f' found multiple times\n"},
        {list, "fields=%00abc,x", 400, "Field 'fields' has no value\n"},
        {list, "fields=n&fields=", 400, "Field 'fields' found multiple times\n"},
        {list, "fields=" + std::string(1024, 'n'), 400, "Insufficient storage for fields=nnn"},
        {list, "fields=" + k64 + k64, 200, "Insufficient storage for unsupported fields"},
        {list, "fields=n,a,b", 200, "fieldMask = 0x00000801, unsupported a\n", "WARN :"},
        {list, "folder=123456789&files=", 400, "folder=123456789 is an invalid value\n"},
        {list, "folder=A&folder=A&files=", 400, "Field 'folder' found multiple times\n"},
        {list, "folder=A", 400, "Required field 'files' missing\n"},
        {list, "files=A", 400, "Required field 'folder' missing\n"},
        {list, "f=upload&status=", 400, "Required field 'status' has no value\n"},
        {list, "f=upload&status=3x", 400, "status=3x is an invalid value\n"},
        {list, "f=upload&status=4294967296", 400, "status=4294967296 is an invalid value\n"},
        {list, "f=upload&status=00000000001", 400, "status=00000000001 is an invalid value\n"},
        {list, "status=1&status=1", 400, "Required field 'status' found multiple times\n"},
        {metadata, "p=1", 400, "Field 't' not found\n"},
        {metadata, "t=" + p, 400, "Field 't' has no value\n"},
        {metadata, "t=DUR" + p, 501, "t=DUR not implemented\n"},
        {metadata, "t=" + k64 + p, 400, "Insufficient internal storage for t=" + k63 + "\n"},
        {metadata, "t=dur&t=dur" + p, 400, "Required field 't' found multiple times\n"},
        {metadata, "t=dur", 400, "Required field 'p' not found\n"},
        {metadata, "t=dur&p=", 400, "Required field 'p' has no value\n"},
        {metadata, "t=dur" + p + p, 400, "Required field 'p' found multiple times\n"},
        {metadata, "t=dur&p=//", 400, "invalid directory name: dir:''\n"},
        {metadata, "t=dur&p=123456789/A", 400, "invalid directory name: dir:'123456789'\n"},
        {metadata, "t=dur&p=100VMEDI/", 400, "invalid filename: file:''\n"},
        {metadata, "t=dur&p=A/V00100012.MP4/B", 400, "invalid filename: file:'V00100012.MP4'\n"},
        {metadata, "t=dur&p=A/V0010001.mp4", 404,
         "Not a JPG or MP4 file name 'V0010001.mp4', inferring FILE NOT_FOUND\n", "WARN :"},
        {metadata, "t=dur&p=A/V%00001000.MP4", 404, "Not a JPG or MP4 file name 'V', ", "WARN :"},
        {metadata, "t=dur&p=A/V1.MP4", 404, "Not a JPG or MP4 file name 'V1.MP4', ", "WARN :"},
    };
    g_logLevel = UTIL_LOG_WARN;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.query);
        scripted::reset();
        QuerySettings settings;
        EXPECT_EQ(c.parse(c.query.c_str(), &settings), c.status);
        EXPECT_TRUE(platform.logged("UTIL_LOG_" + c.level + c.message))
            << testing::PrintToString(platform.logs);
    }
    g_logLevel = UTIL_LOG_ERROR;
}

}  // namespace

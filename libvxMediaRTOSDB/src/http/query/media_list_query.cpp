#include <mediacheckd/vxMediaRTOSDB/media_list_query.h>

#include <cstring>
#include <string_view>

#include "libvxMediaRTOSDB/src/http/query/query_data_set.h"
#include "libvxMediaRTOSDB/src/http/query/query_fields.h"
#include "libvxMediaRTOSDB/src/http/query/query_value.h"
#include "libvxMediaRTOSDB/src/http/query/text_split.h"
#include "libvxMediaRTOSDB/src/log/util_assert.h"
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/query_status.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

constexpr size_t kFieldsValueSize = 1024;
constexpr uint32_t kEverythingQueryOptions = 0xFFFFFB00;

constexpr QueryKey kDataSetKey = {.name = "f", .empty = kFieldEmpty, .repeated = kFieldRepeated};
constexpr QueryKey kFieldsKey = {
    .name = "fields", .empty = kFieldEmpty, .repeated = kFieldRepeated};
constexpr QueryKey kFolderKey = {.name = "folder", .repeated = kFieldRepeated};

constexpr uint32_t kVideos = QUERY_OPTION_VIDEO;
constexpr uint32_t kPhotos = QUERY_OPTION_PHOTO;
constexpr uint32_t kVideosAndPhotos = kVideos | kPhotos;
constexpr uint32_t kEveryKind =
    kVideosAndPhotos | RTOS_DB_QUERY_METADATA_SESSION_FILES | QUERY_OPTION_RAW;

constexpr DataSet kDataSets[] = {
    {"photos", eDBFILTER_T_PHOTOS, kPhotos},
    {"video", eDBFILTER_T_VIDEO, kVideos},
    {"clips", eDBFILTER_T_CLIPS, kVideosAndPhotos},
    {"videoclips", eDBFILTER_T_CLIPS, kVideos},
    {"photoclips", eDBFILTER_T_PHOTOCLIPS, kPhotos},
    {"highlights", eDBFILTER_T_HIGHLIGHTS, kVideosAndPhotos},
    {"videohighlights", eDBFILTER_T_VIDEOHIGHLIGHTS, kVideos},
    {"photohighlights", eDBFILTER_T_PHOTOHIGHLIGHTS, kPhotos},
    {"groups", eDBFILTER_T_GROUPS, kVideosAndPhotos},
    {"videogroups", eDBFILTER_T_GROUPS, kVideos},
    {"photogroups", eDBFILTER_T_PHOTOGROUPS, kPhotos},
    {"raw", eDBFILTER_T_RAW, QUERY_OPTION_RAW},
    {"gumi", eDBFILTER_T_GUMI, 0},
    {"none", eDBFILTER_T_NONE, kEveryKind},
    {"upload", eDBFILTER_T_UPLOAD, 0},
};

int parseQueryF(std::string_view query, QuerySettings* pSettings) {
    const int status = parseDataSet(query, kDataSetKey, kDataSets, pSettings);
    if (pSettings->filter == eDBFILTER_T_UPLOAD) {
        pSettings->whitelistMask = FIELD_UPLOAD_STATUS;
    }
    return status;
}

// Returns false when there is no room for the name.
bool addUnsupported(std::string_view name, QuerySettings* pSettings) {
    char* text = pSettings->unsupported;
    size_t length = std::strlen(text);
    const size_t separator = length > 0;
    if (length + separator + name.size() > kMaxUnsupportedLength) {
        UTIL_LOG(UTIL_LOG_ERROR, "Insufficient storage for unsupported fields");
        return false;
    }
    if (separator) {
        text[length++] = ',';
    }
    name.copy(text + length, name.size());
    return true;
}

std::string_view withoutQuotes(std::string_view text) {
    if (text.size() < 2 || text.front() != '"' || text.back() != '"') {
        return text;
    }
    return text.substr(1, text.size() - 2);
}

int parseQueryFields(std::string_view query, QuerySettings* pSettings) {
    UTIL_ASSERT(pSettings->unsupported[0] == '\0');
    char buffer[kFieldsValueSize];
    const QueryValue value = readQueryValue(query, kFieldsKey, buffer);
    if (value.status != HTTP_OK || value.text.empty()) {
        return value.status;
    }

    uint32_t fieldMask = 0;
    bool room = true;  // for unsupported names: the first ones are told, without gaps
    std::string_view names = withoutQuotes(value.text);
    for (auto name = takePiece(&names, ','); !name.empty(); name = takePiece(&names, ',')) {
        UTIL_LOG(UTIL_LOG_DEBUG, "    field %.*s\n", static_cast<int>(name.size()), name.data());
        const uint32_t fields = fieldsOf(name);
        fieldMask |= fields;
        if (fields == 0) {
            room = room && addUnsupported(name, pSettings);
        }
    }
    UTIL_LOG(UTIL_LOG_WARN, "fieldMask = 0x%08X, unsupported %s\n", fieldMask,
             pSettings->unsupported);
    pSettings->whitelistMask = fieldMask;
    return checkNotRepeated(query, kFieldsKey);
}

int parseQueryFolder(std::string_view query, QuerySettings* pSettings) {
    UTIL_ASSERT(pSettings->dirName[0] == '\0');
    char buffer[kQueryValueSize];
    const QueryValue value = readQueryValue(query, kFolderKey, buffer);
    if (value.status != HTTP_OK) {
        return value.status;
    }
    if (value.text.size() > kDirNameSize) {
        return rejectValue(HTTP_BAD_REQUEST, kInvalidValue, kFolderKey, value);
    }
    value.text.copy(pSettings->dirName, kDirNameSize);
    return checkNotRepeated(query, kFolderKey);
}

// Only tests the value: the gumi list reads it from the query itself.
int parseQueryFiles(std::string_view query, const QuerySettings& settings) {
    const bool hasFolder = settings.dirName[0] != '\0';
    const QueryKey key = {
        .name = "files",
        .absent = hasFolder ? "Required field '%s' missing\n" : nullptr,
    };
    char buffer[kQueryValueSize];
    const QueryValue value = readQueryValue(query, key, buffer);
    if (value.status == HTTP_OK && !value.text.empty() && !hasFolder) {
        UTIL_LOG(UTIL_LOG_ERROR, "Required field 'folder' missing\n");
        return HTTP_BAD_REQUEST;
    }
    return value.status;
}

}  // namespace

int parseMediaListQuery(const char* query, QuerySettings* pSettings) {
    UTIL_ASSERT(query);
    UTIL_ASSERT(pSettings);
    *pSettings = {};
    pSettings->whitelistMask = kAllFields;

    const std::string_view text = query;
    int status = parseQueryF(text, pSettings);
    if (status == HTTP_OK) {
        status = parseQueryFields(text, pSettings);
    }
    if (status == HTTP_OK) {
        status = parseQueryFolder(text, pSettings);
    }
    if (status == HTTP_OK) {
        status = parseQueryFiles(text, *pSettings);
    }
    if (status == HTTP_OK) {
        status = parseQueryStatus(query, static_cast<int>(text.size()), pSettings);
    }
    if (text.empty()) {
        pSettings->rtosDBQueryOptions = kEverythingQueryOptions;
        pSettings->whitelistMask = kLegacyFields;
    }
    return status;
}

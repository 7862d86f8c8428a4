#include <mediacheckd/vxMediaRTOSDB/metadata_query.h>

#include <algorithm>
#include <string_view>

#include "libvxMediaRTOSDB/src/http/query/query_data_set.h"
#include "libvxMediaRTOSDB/src/http/query/query_value.h"
#include "libvxMediaRTOSDB/src/http/query/text_split.h"
#include "libvxMediaRTOSDB/src/log/util_assert.h"
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/query_status.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

constexpr QueryKey kDataSetKey = {
    .name = "t",
    .absent = "Field '%s' not found\n",
    .empty = kFieldEmpty,
    .tooLong = "Insufficient internal storage for %s=%s\n",
    .repeated = kRequiredFieldRepeated,
};

constexpr QueryKey kPathKey = {
    .name = "p",
    .absent = "Required field '%s' not found\n",
    .empty = kRequiredFieldEmpty,
    .repeated = kRequiredFieldRepeated,
};

constexpr DataSet kDataSets[] = {
    {"videoinfo", eDBFILTER_T_GET_VIDEOINFO}, {"dur", eDBFILTER_T_GET_DUR},
    {"v4info", eDBFILTER_T_GET_V4INFO},       {"v5info", eDBFILTER_T_GET_V5INFO},
    {"upload", eDBFILTER_T_GET_UPLOAD},
};

bool isMediaFileName(std::string_view name) {
    constexpr size_t kExtension = 8;
    const std::string_view extension = name.substr(std::min(kExtension, name.size()));
    return extension == ".JPG" || extension == ".MP4" || extension == ".360";
}

// name: a piece of the key's value.
int rejectName(const char* message, std::string_view name) {
    char text[kQueryValueSize] = {};
    name.copy(text, sizeof(text) - 1);
    UTIL_LOG(UTIL_LOG_ERROR, message, text);
    return HTTP_BAD_REQUEST;
}

int parseQueryP(std::string_view query, QuerySettings* pSettings) {
    UTIL_ASSERT(pSettings->dirName[0] == '\0');
    UTIL_ASSERT(pSettings->fileName[0] == '\0');
    char buffer[kQueryValueSize];
    const QueryValue value = readQueryValue(query, kPathKey, buffer);
    if (value.status != HTTP_OK) {
        return value.status;
    }

    std::string_view path = value.text;
    const std::string_view directory = takePiece(&path, '/');
    const std::string_view file = takePiece(&path, '/');
    if (directory.empty() || directory.size() > kDirNameSize) {
        return rejectName("invalid directory name: dir:'%s'\n", directory);
    }
    if (file.empty() || file.size() > kFileNameSize) {
        return rejectName("invalid filename: file:'%s'\n", file);
    }
    directory.copy(pSettings->dirName, kDirNameSize);
    file.copy(pSettings->fileName, kFileNameSize);
    if (!isMediaFileName(file)) {
        UTIL_LOG(UTIL_LOG_WARN, "Not a JPG or MP4 file name '%s', inferring FILE NOT_FOUND\n",
                 pSettings->fileName);
        return HTTP_NOT_FOUND;
    }
    return checkNotRepeated(query, kPathKey);
}

}  // namespace

int parseMetadataQuery(const char* query, QuerySettings* pSettings) {
    UTIL_ASSERT(query);
    UTIL_ASSERT(pSettings);
    *pSettings = {};
    pSettings->whitelistMask = kMetadataFields;

    const std::string_view text = query;
    int status = parseDataSet(text, kDataSetKey, kDataSets, pSettings);
    if (status == HTTP_OK) {
        status = parseQueryP(text, pSettings);
    }
    if (status == HTTP_OK) {
        status = parseQueryStatus(query, static_cast<int>(text.size()), pSettings);
    }
    return status;
}

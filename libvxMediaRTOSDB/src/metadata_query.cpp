#include "libvxMediaRTOSDB/src/metadata_query.h"

#include <algorithm>
#include <string_view>

#include "libvxMediaRTOSDB/src/http_status.h"
#include "libvxMediaRTOSDB/src/query_status.h"
#include "libvxMediaRTOSDB/src/query_value.h"
#include "libvxMediaRTOSDB/src/text_split.h"
#include "libvxMediaRTOSDB/src/util_assert.h"
#include "libvxMediaRTOSDB/src/util_log.h"

namespace {

constexpr QueryKey kDataSetKey = {
    .name = "t",
    .absent = "Field '%s' not found\n",
    .empty = "Field '%s' has no value\n",
    .tooLong = "Insufficient internal storage for %s=%s\n",
    .repeated = "Required field '%s' found multiple times\n",
};

constexpr QueryKey kPathKey = {
    .name = "p",
    .absent = "Required field '%s' not found\n",
    .empty = "Required field '%s' has no value\n",
    .tooLong = "Insufficient storage for %s=%s\n",
    .repeated = "Required field '%s' found multiple times\n",
};

struct DataSet {
    std::string_view value;
    DbFilter filter;
};

constexpr DataSet kDataSets[] = {
    {"videoinfo", eDBFILTER_T_GET_VIDEOINFO}, {"dur", eDBFILTER_T_GET_DUR},
    {"v4info", eDBFILTER_T_GET_V4INFO},       {"v5info", eDBFILTER_T_GET_V5INFO},
    {"upload", eDBFILTER_T_GET_UPLOAD},
};

int parseQueryT(std::string_view query, QuerySettings* pSettings) {
    char buffer[kQueryValueSize];
    const QueryValue value = readQueryValue(query, kDataSetKey, buffer);
    if (value.status != HTTP_OK)
        return value.status;
    for (const DataSet& dataSet : kDataSets) {
        if (dataSet.value == value.text) {
            pSettings->filter = dataSet.filter;
            return checkNotRepeated(query, kDataSetKey);
        }
    }
    return rejectValue(HTTP_NOT_IMPLEMENTED, "%s=%s not implemented\n", kDataSetKey, value);
}

bool isMediaFileName(std::string_view name) {
    constexpr size_t kExtension = 8;
    const std::string_view extension = name.substr(std::min(kExtension, name.size()));
    return extension == ".JPG" || extension == ".MP4" || extension == ".360";
}

int parseQueryP(std::string_view query, QuerySettings* pSettings) {
    UTIL_ASSERT(pSettings->dirName[0] == '\0');
    UTIL_ASSERT(pSettings->fileName[0] == '\0');
    char buffer[kQueryValueSize];
    const QueryValue value = readQueryValue(query, kPathKey, buffer);
    if (value.status != HTTP_OK)
        return value.status;

    std::string_view path = value.text;
    const std::string_view directory = takePiece(&path, '/');
    const std::string_view file = takePiece(&path, '/');
    if (directory.empty() || directory.size() > kDirNameSize) {
        UTIL_LOG(UTIL_LOG_ERROR, "invalid directory name: dir:'%.*s'\n",
                 static_cast<int>(directory.size()), directory.data());
        return HTTP_BAD_REQUEST;
    }
    if (file.empty() || file.size() > kFileNameSize) {
        UTIL_LOG(UTIL_LOG_ERROR, "invalid filename: file:'%.*s'\n", static_cast<int>(file.size()),
                 file.data());
        return HTTP_BAD_REQUEST;
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
    int status = parseQueryT(text, pSettings);
    if (status == HTTP_OK)
        status = parseQueryP(text, pSettings);
    if (status == HTTP_OK)
        status = parseQueryStatus(query, static_cast<int>(text.size()), pSettings);
    return status;
}

#include "libvxMediaRTOSDB/src/http/list/gumi_list.h"

#include <algorithm>
#include <string_view>

#include "libvxMediaRTOSDB/src/http/list/media_document.h"
#include "libvxMediaRTOSDB/src/http/query/text_split.h"
#include "libvxMediaRTOSDB/src/http/response/http_output.h"
#include "libvxMediaRTOSDB/src/http/text/media_db_output_guard.h"
#include "libvxMediaRTOSDB/src/http/text/text_buffer.h"
#include "libvxMediaRTOSDB/src/log/util_assert.h"
#include "libvxMediaRTOSDB/src/records/name_fields.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/media_formatters.h>
#include <mediacheckd/vxMediaRTOSDB/query_settings.h>
#include <mediacheckd/vxMediaRTOSDB/response_queries.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

constexpr std::string_view kDataSet = "f=gumi";

// Takes "KEY=" and the value behind it, up to the next "&", off the query.
// Returns false when the query does not go on with the key.
bool takeValue(std::string_view* query, std::string_view key, std::string_view* value) {
    if (!query->starts_with(key)) {
        return false;
    }
    query->remove_prefix(key.size());
    *value = query->substr(0, query->find('&'));
    query->remove_prefix(value->size());
    return true;
}

struct Question {
    std::string_view directory;
    std::string_view files;  // joined by ","
};

// query: what follows the data set. Returns an HTTP status.
int parseQuestion(std::string_view query, Question* question) {
    if (!takeValue(&query, "&folder=", &question->directory)) {
        UTIL_LOG(UTIL_LOG_ERROR, "Required '&folder=' key missing, aborting\n");
        return HTTP_BAD_REQUEST;
    }
    if (question->directory.size() > kDirNameSize) {
        UTIL_LOG(UTIL_LOG_ERROR, "&folder= value too long (8 char max), aborting\n");
        return HTTP_BAD_REQUEST;
    }
    if (!takeValue(&query, "&files=", &question->files)) {
        UTIL_LOG(UTIL_LOG_ERROR, "Required '&files=' key missing, aborting\n");
        return HTTP_BAD_REQUEST;
    }
    return HTTP_OK;
}

int formatFileGUMIResponse(vxMediaDBOutput* output, const char* pPrepend,
                           const db_item_record* pInfo, const db_gumi* pGUMI,
                           const db_gumi* pPGUMI) {
    UTIL_ASSERT(pPrepend);
    UTIL_ASSERT(pInfo);
    TextBuffer entry = entryOf(*output);
    entry.append(here(), std::string_view(pPrepend), "{\"n\":\"",
                 JsonText{textOf(pInfo->file_name)}, "\"");
    const int status = formatGUMI(output, kAllFields, ",", pGUMI, pPGUMI);
    if (status == HTTP_OK) {
        entry.append(here(), "}");
    }
    return entry.complete() ? status : HTTP_INTERNAL_ERROR;
}

// Writes the object of one file into the entry buffer. Returns an HTTP status.
int writeFile(vxMediaDBOutput* output, rtosConnection* connection, const char* directory,
              const char* file, const char* prefix) {
    uint8_t response[kResponseBufferSize];
    const db_item_record* item = nullptr;
    const db_gumi* gumi = nullptr;
    const db_gumi* parentGumi = nullptr;
    const int status =
        getFileGUMIResponse(connection, directory, file, response, &item, &gumi, &parentGumi);
    if (status == HTTP_NOT_FOUND) {
        TextBuffer entry = entryOf(*output);
        entry.append(here(), std::string_view(prefix), "{\"n\":\"", JsonText{file},
                     "\",\"DNE\":\"1\"}");
        return entry.complete() ? HTTP_OK : HTTP_INTERNAL_ERROR;
    }
    if (status != HTTP_OK) {
        return status;
    }
    return formatFileGUMIResponse(output, prefix, item, gumi, parentGumi);
}

// Writes the group of the directory into the page. Returns an HTTP status.
int writeGroup(vxMediaDBOutput* output, rtosConnection* connection, Question question) {
    char directory[kDirNameSize + 1] = {};
    question.directory.copy(directory, kDirNameSize);

    OutputTexts texts(*output);
    TextBuffer& group = texts.directory;
    group.append(here(), "{\"d\":\"", JsonText{directory}, "\",\"fs\":[");
    const char* prefix = "";
    for (auto name = takePiece(&question.files, ','); !name.empty();
         name = takePiece(&question.files, ',')) {
        char file[kFileNameSize + 1] = {};
        name.copy(file, kFileNameSize);
        const int status = writeFile(output, connection, directory, file, prefix);
        if (status != HTTP_OK) {
            return status;
        }
        group.append(here(), texts.entry.text());
        texts.entry.clear();
        prefix = ",";
    }
    group.append(here(), "]}");
    texts.page.append(here(), group.text());
    return texts.complete() ? HTTP_OK : HTTP_INTERNAL_ERROR;
}

}  // namespace

int generateGumiList(void* outputHandle, const char* query) {
    std::string_view text = query;
    if (!text.starts_with(kDataSet)) {
        UTIL_LOG(UTIL_LOG_ERROR, "Required 'gumi=' key missing, aborting\n");
        return -1;
    }
    text.remove_prefix(kDataSet.size());

    MediaDBOutputGuard output(outputHandle);
    if (output.result() < 0) {
        UTIL_LOG(UTIL_LOG_ERROR, "vxMediaDBOutputCtor ret < 0");
    }
    RtosConnectionGuard connection;
    if (connection.result() < 0) {
        UTIL_LOG(UTIL_LOG_ERROR, "rtosConnectionCtor ret < 0");
    }
    const CardIdentity identity;
    int status = statusAtStart(connection, identity);
    if (status == HTTP_OK && output.result() < 0) {
        status = HTTP_INTERNAL_ERROR;
    }
    Question question;
    if (status == HTTP_OK) {
        status = parseQuestion(text, &question);
    }
    if (status == HTTP_OK) {
        status = writeGroup(output.get(), connection.get(), question);
    }

    const vxMediaDBOutput& built = *output.get();
    printMediaDocument(status, {identity, "", textUpTo(built.pagePosition, built.localBuffer), ""});
    return finishResponse(status);
}

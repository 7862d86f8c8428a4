#include "libvxMediaRTOSDB/src/http/list/media_document.h"

#include <cinttypes>
#include <cstdio>

#include "libvxMediaRTOSDB/src/http/response/http_output.h"
#include <mediacheckd/vxMediaRTOSDB/http_status.h>

namespace {

void printProgress(const ListProgress& progress) {
    std::printf(",\"session\":\"%" PRIu32 "\",\"total\":\"%" PRIu32 "\"", progress.sessionId,
                progress.totalEntries);
    if (progress.nextIndex < progress.totalEntries) {
        std::printf(",\"next\":\"%" PRIu64 "\"", progress.nextIndex);
    }
}

}  // namespace

void printMediaDocument(int status, const MediaDocument& document) {
    printHeader(status);
    printText("{\"id\":\"");
    printText(document.identity.text());
    printText("\"");
    if (!document.unsupportedFields.empty()) {
        printText(",\"unsupported_fields\":\"");
        printJsonText(document.unsupportedFields);
        printText("\"");
    }
    if (document.progress && status == HTTP_OK) {
        printProgress(*document.progress);
    }
    printText(",\"media\":[");
    if (status == HTTP_OK) {
        printText(document.groups);
        printText(document.groupsEnd);
    }
    printText("]}\r\n");
}

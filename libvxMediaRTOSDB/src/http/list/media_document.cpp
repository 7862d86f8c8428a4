#include "libvxMediaRTOSDB/src/http/list/media_document.h"

#include "libvxMediaRTOSDB/src/http/response/http_output.h"
#include <mediacheckd/vxMediaRTOSDB/http_status.h>

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
    printText(",\"media\":[");
    if (status == HTTP_OK) {
        printText(document.groups);
        printText(document.groupsEnd);
    }
    printText("]}\r\n");
}

#include "libvxMediaRTOSDB/src/http/response/http_output.h"

#include <cstdio>

#include "libvxMediaRTOSDB/src/http/text/text_part.h"
#include <mediacheckd/vxMediaRTOSDB/http_status.h>

void printHeader(int status) {
    std::clearerr(stdout);
    std::printf("HTTP/1.1 %d \r\n", status);
    std::printf("Content-Type: application/json\r\n");
    std::printf("\r\n");
}

void printText(std::string_view text) {
    if (std::ferror(stdout) == 0) {
        std::fwrite(text.data(), 1, text.size(), stdout);
    }
}

void printJsonText(std::string_view text) {
    constexpr size_t kPiece = 128;
    char escaped[kLongestEscape * kPiece];
    for (size_t i = 0; i < text.size(); i += kPiece) {
        printText({escaped, write(escaped, JsonText{text.substr(i, kPiece)})});
    }
}

int printErrorResponse(int status) {
    printHeader(status);
    return finishResponse(status);
}

int finishResponse(int status) {
    std::fflush(stdout);
    return status == HTTP_OK ? 0 : -1;
}

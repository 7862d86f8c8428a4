// The JSON document of the media lists, as an HTTP response.
#pragma once

#include <string_view>

#include "libvxMediaRTOSDB/src/http/response/response_start.h"

struct MediaDocument {
    const CardIdentity& identity;
    std::string_view unsupportedFields;  // left out when empty
    std::string_view groups;             // printed with HTTP_OK only
    std::string_view groupsEnd;          // closes the last group
};

// Prints header and document. With a status other than HTTP_OK the document has no groups.
void printMediaDocument(int status, const MediaDocument& document);

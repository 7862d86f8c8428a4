// The JSON document of the media lists, as an HTTP response.
#pragma once

#include <optional>
#include <string_view>

#include "libvxMediaRTOSDB/src/http/list/list_pages.h"
#include "libvxMediaRTOSDB/src/http/response/response_start.h"

struct MediaDocument {
    const CardIdentity& identity;
    std::string_view unsupportedFields;  // left out when empty
    std::string_view groups;             // printed with HTTP_OK only
    std::string_view groupsEnd;          // closes the last group
    // Of a piece of a list: tells its session, how many items there are and where the next piece
    // starts, if there is one.
    std::optional<ListProgress> progress = std::nullopt;
};

// Prints header and document. With a status other than HTTP_OK the document has no groups.
void printMediaDocument(int status, const MediaDocument& document);

// The records of the media database's replies, for tests that put them one after the other.
#pragma once

#include <initializer_list>
#include <string>

#include "tests/support/scripted_platform.h"
#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>

namespace scripted {

inline Bytes join(std::initializer_list<Bytes> parts) {
    Bytes bytes;
    for (const Bytes& part : parts) {
        append(bytes, part);
    }
    return bytes;
}

inline Bytes text(const std::string& characters) {
    return {characters.begin(), characters.end()};
}

// The header of every reply; the token is 0.
inline Bytes responseHeader(uint32_t command, uint32_t count, uint32_t status = 0) {
    return words({command, status, count, 3, 0});
}

constexpr uint32_t kSessionId = 0x5E551011;

// The header of a list page that holds the whole list.
inline Bytes listHeader(uint32_t count, uint32_t listOptions = LIST_OPTION_VIDEO_GROUPING) {
    return join(
        {responseHeader(DB_CMD_LIST, count), words({0, listOptions, 0, count, kSessionId})});
}

// An item in the directory 100VMEDI: created 1000, modified 2000, upload status 4, score 100 with a
// bit above it, size 0x100000002 bytes.
inline Bytes itemRecord(uint32_t contentType, const std::string& fileName, uint32_t highlights = 0,
                        uint32_t attributes = 0) {
    return join(
        {words({contentType}), text("100VMEDI"), text(fileName),
         words({1000, 2000, highlights, attributes, 4, 2, 1, 0x80 | 100, 0, 90, 120, 0, 0})});
}

// A group of 0x200000003 bytes.
inline Bytes groupInfo(uint32_t groupNumber, uint32_t first, uint32_t last, uint32_t missing = 0) {
    return words({groupNumber, first, last, missing, 3, 2});
}

inline Bytes videoInfo(uint32_t durationMs, uint32_t highlightCount = 0, uint32_t clip = 0) {
    return words({7, durationMs, 8, 9, highlightCount, clip});
}

}  // namespace scripted

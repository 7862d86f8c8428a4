// A text that the library builds up to a limit, in storage allocated once.
//
// When something does not fit, that is logged and counted, nothing is added, and the text starts
// anew: a response that lost text answers with HTTP_INTERNAL_ERROR.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// Where in a response a buffer is used.
enum class TextBufferKind {
    kPage,       // the whole list
    kDirectory,  // the files of one directory
    kEntry,      // the object of one file
};

// Characters that a buffer of each kind holds, the limit included.
constexpr size_t kPageLimit = 131072;
constexpr size_t kDirectoryLimit = 65536;
constexpr size_t kEntryLimit = 1536;

struct TextBuffer {
    char* start;  // a zero stands behind the text
    size_t length;
    size_t limit;
    uint32_t losses;  // how often something did not fit
    TextBufferKind kind;

    // Valid until the text changes.
    [[nodiscard]] std::string_view text() const { return {start, length}; }

    // Tells whether everything that was appended did fit; since: the losses until then.
    [[nodiscard]] bool complete(uint32_t since = 0) const { return losses == since; }
};

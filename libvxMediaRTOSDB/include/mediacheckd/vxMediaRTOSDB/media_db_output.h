// The buffers that a response is built in, each allocated once.
//
// When something does not fit into a buffer, that is logged, nothing is added, and the buffer's
// text starts anew: a response that lost text answers with HTTP_INTERNAL_ERROR.
#pragma once

#include <cstddef>
#include <cstdint>

// Characters that a buffer holds at most; a zero stands behind its text.
constexpr size_t kPageLimit = 131072;
constexpr size_t kDirectoryLimit = 65536;
constexpr size_t kEntryLimit = 1536;

// Each buffer stands before its write position: where its text ends and the next one goes.
struct vxMediaDBOutput {
    void* outputHandle;  // the caller's; only kept
    char* localBuffer;   // the whole list
    char* pagePosition;
    char* localDirectoryBuffer;  // the files of one directory
    char* directoryPosition;
    char* localEntryBuffer;  // the object of one file
    char* entryPosition;
    uint32_t spare[3];
};

extern "C" {
#pragma GCC visibility push(default)

// Zeroes the output and allocates its three buffers, empty, which vxMediaDBOutputDtor frees.
// pOutput: not null: the process ends. outputHandle: may be null.
// Returns 0, or -1, logged and with nothing allocated, when there is no memory.
[[nodiscard]] int vxMediaDBOutputCtor(vxMediaDBOutput* pOutput, void* outputHandle);

// Frees the buffers and clears them; harmless after a failed vxMediaDBOutputCtor.
void vxMediaDBOutputDtor(vxMediaDBOutput* pOutput);

#pragma GCC visibility pop
}

// The buffers that a response is built in.
#pragma once

#include <cstdint>

#include <mediacheckd/vxMediaRTOSDB/text_buffer.h>

struct vxMediaDBOutput {
    void* outputHandle;  // the caller's; only kept
    TextBuffer localBuffer;
    TextBuffer localDirectoryBuffer;
    TextBuffer localEntryBuffer;
    uint32_t spare[3];

    // False when something did not fit into one of the buffers.
    [[nodiscard]] bool complete() const {
        return localBuffer.complete() && localDirectoryBuffer.complete() &&
               localEntryBuffer.complete();
    }
};

extern "C" {
#pragma GCC visibility push(default)

// Zeroes the output and allocates its three buffers, which vxMediaDBOutputDtor frees.
// pOutput: not null: the process ends. outputHandle: may be null.
// Returns 0, or -1, logged and with nothing allocated, when there is no memory.
[[nodiscard]] int vxMediaDBOutputCtor(vxMediaDBOutput* pOutput, void* outputHandle);

// Frees the buffers and clears their records; harmless after a failed vxMediaDBOutputCtor.
void vxMediaDBOutputDtor(vxMediaDBOutput* pOutput);

#pragma GCC visibility pop
}

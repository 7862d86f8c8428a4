// Text on standard output that neither waits for a reader nor falls with one.
#pragma once

#include <limits.h>
#include <poll.h>
#include <stdio_ext.h>

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "vcore/base/write_guard.h"

namespace vcore {

// Tells whether standard output takes PIPE_BUF bytes without waiting for a reader. One that is
// gone, or a stream without a descriptor, keeps nobody waiting.
inline bool isTakenAtOnce() {
    pollfd output = {fileno(stdout), POLLOUT, 0};
    return output.fd < 0 || poll(&output, 1, 0) != 0;
}

// Writes the text, and what stdio held before it, as far as standard output takes it without
// waiting. The rest stays with stdio, which waits itself when it can hold no more, until the next
// call.
inline void showText(std::string_view text) {
    const WriteGuard guard;
    flockfile(stdout);
    bool shown = true;
    while (shown && !text.empty() && isTakenAtOnce()) {
        const std::string_view piece =
            text.substr(0, PIPE_BUF - std::min<std::size_t>(__fpending(stdout), PIPE_BUF));
        fwrite(piece.data(), 1, piece.size(), stdout);
        text.remove_prefix(piece.size());
        shown = fflush(stdout) == 0;
    }
    fwrite(text.data(), 1, text.size(), stdout);
    funlockfile(stdout);
}

// Writes what stdio still holds for standard output, waiting for its reader where there is one.
inline void flushStandardOutput() {
    const WriteGuard guard;
    fflush(stdout);
}

}  // namespace vcore

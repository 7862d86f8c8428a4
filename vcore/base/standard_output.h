// Text on standard output that neither waits for a reader nor falls with one.
#pragma once

#include <fcntl.h>
#include <stdio_ext.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <string_view>

#include "vcore/base/write_guard.h"

namespace vcore {

// Writes as much of the text as a pipe, socket or terminal takes without waiting. The reader's end
// may be shared with other processes: it is not made non-blocking, a description of our own is.
// Returns the number of characters written, or a negative number.
inline ssize_t offerText(int output, mode_t type, std::string_view text) {
    if (S_ISSOCK(type)) {
        return send(output, text.data(), text.size(), MSG_DONTWAIT);
    }
    char path[32];
    snprintf(path, sizeof path, "/proc/self/fd/%d", output);
    const int own = open(path, O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (own < 0) {
        return -1;
    }
    const ssize_t written = write(own, text.data(), text.size());
    close(own);
    return written;
}

// Shows the text at once where standard output takes it without waiting. What it does not take
// stays in stdio's buffer, behind what waits there already, until somebody flushes it.
inline void showText(std::string_view text) {
    const WriteGuard guard;
    struct stat status {};
    const int output = fileno(stdout);
    const bool waitsForNobody =
        fstat(output, &status) != 0 || S_ISREG(status.st_mode) || S_ISBLK(status.st_mode);
    if (!waitsForNobody && __fpending(stdout) == 0) {
        const ssize_t shown = offerText(output, status.st_mode, text);
        text.remove_prefix(shown > 0 ? static_cast<std::size_t>(shown) : 0);
    }
    fwrite(text.data(), 1, text.size(), stdout);
    if (waitsForNobody) {
        fflush(stdout);
    }
}

// Writes what stdio still holds for standard output, waiting for its reader where there is one.
inline void flushStandardOutput() {
    const WriteGuard guard;
    fflush(stdout);
}

}  // namespace vcore

// The dump of the bytes that go over the channel, printed on standard output.
#pragma once

enum class Direction { kSent, kReceived };

// Prints the direction and the bytes, 32 a line, when g_logLevel is above UTIL_LOG_INFO.
// length: number of bytes; below 1 only the direction and a line break are printed.
void hexDump(Direction direction, const void* bytes, int length);

// The dump of the bytes that go over the channel, printed on standard output.
#pragma once

// Prints the label and the bytes, 32 a line, when g_logLevel is above UTIL_LOG_INFO.
// length: number of bytes; below 1 only the label and a line break are printed.
void hexDump(const char* label, const void* bytes, int length);

constexpr const char* kSendLabel = "\nSnd ";
constexpr const char* kReceiveLabel = "\nRcv ";

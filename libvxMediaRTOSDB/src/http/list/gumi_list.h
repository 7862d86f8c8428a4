// The gumi list: the GUMIs of files that a query names, one by one.
#pragma once

// Answers a media-list query that begins with "f=gumi&folder=DIRECTORY&files=FILE,FILE..." on
// standard output, which it flushes. A query that does not begin with "f=gumi" gets no answer.
// Returns 0 for status 200, else -1.
[[nodiscard]] int generateGumiList(void* outputHandle, const char* query);

// The duration of one video.
#pragma once

#include <cstdint>

// Asks the database, on a connection of its own, for the duration of a video.
// dirName: up to 8 characters. fileName: up to 12 characters.
// durationMs: receives the duration in milliseconds, 0 when the database does not tell it.
// Returns false when the exchange failed in all its tries: the database is silent.
[[nodiscard]] bool getVideoDuration(const char* dirName, const char* fileName,
                                    uint32_t* durationMs);

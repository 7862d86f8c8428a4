// The names of the files in a directory of the card, read past the database.
#pragma once

#include <cstddef>
#include <cstdint>

#include <mediacheckd/vxMediaRTOSDB/db_requests.h>
#include <mediacheckd/vxMediaRTOSDB/little_endian.h>

// One file of a scanned directory, in the caller's array.
struct db_scandir_entry {
    uint8_t reserved[3];                // never written
    char file_name[kFileNameSize + 1];  // zero-terminated
    u32le word2;                        // as the database reports them; not interpreted
    u32le word1;
};
static_assert(sizeof(db_scandir_entry) == 24 && alignof(db_scandir_entry) == 1);
static_assert(offsetof(db_scandir_entry, file_name) == 3);
static_assert(offsetof(db_scandir_entry, word2) == 16);

extern "C" {
#pragma GCC visibility push(default)

// Says whether a file is kept. fileName: zero-terminated, valid during the call. length: 12.
// Returns 0 to skip the file.
typedef int (*db_scandir_filter)(const char* fileName, int length);

// Reads the names of the files in one directory; the answer may come in several messages.
// dirName: exactly 8 characters.
// entries: receives the files that the filter keeps.
// entryCount: the number of elements of entries; receives the number written. Files count against
// it before they are filtered.
// filter: may be null, which keeps every file.
// Returns 0; -10 when entries is too small, with the first files in it; -5 when the first message
// names no file; or, with nothing written: -4 for a directory name of another length, -1 when the
// database cannot be reached, -3 for an answer that is too short, -7 when the database reports a
// failure.
[[nodiscard]] int dbScanDirectory(const char* dirName, db_scandir_entry* entries,
                                  uint32_t* entryCount, db_scandir_filter filter);

#pragma GCC visibility pop
}

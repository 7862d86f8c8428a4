// The card identity: a random decimal number that is stored on the card once, so that the card
// keeps it.
#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

// Room that an identity needs, terminator included.
#define CARD_ID_SIZE 32

// Storages that hold an identity.
#define CARD_STORAGE_SD 0        // "/tmp/fuse_d/"
#define CARD_STORAGE_INTERNAL 1  // "/tmp/fuse_i/"

// Other components find these by name.
#pragma GCC visibility push(default)

// Reads the identity of the SD card, or makes one, as getCardIDStrExt does for CARD_STORAGE_SD.
int getCardIDStr(char* out);

// Reads the identity from the file "MISC/card" of the storage. Where it is missing, empty or
// damaged a new one is drawn (with srand and rand) and stored, the folder included. The first 30
// characters of the file count, up to a zero byte; any of them that is no digit, a final newline
// included, is damage.
// out: CARD_ID_SIZE bytes. storage: CARD_STORAGE_INTERNAL, or any other number for the SD card.
// Returns 0 with the identity in out, or -1 after a report on standard error, with "0" in out; a
// null out is reported too.
int getCardIDStrExt(char* out, int storage);

// Tells whether the first length characters of text, or all before its terminator if that comes
// first, are decimal digits. Returns 1 if so, also when there are none, else 0.
int isDigitString(const char* text, size_t length);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif

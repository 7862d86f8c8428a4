#include <mediacheckd/vcore/card_id.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>

#include "vcore/base/write_guard.h"

namespace {

// A card's folder may be dated behind 2038 and have a large inode.
static_assert(sizeof(off_t) == 8 && sizeof(time_t) == 8);

constexpr int kMaxStoredDigits = 30;
static_assert(kMaxStoredDigits < CARD_ID_SIZE);
constexpr int kMaxDraws = 10;
constexpr char kNoIdentity[CARD_ID_SIZE] = "0";

struct CardPaths {
    const char* folderEntry;  // without the final slash, under which a plain file is seen too
    const char* folder;
    const char* file;
};

constexpr CardPaths kSdPaths{"/tmp/fuse_d/MISC", "/tmp/fuse_d/MISC/", "/tmp/fuse_d/MISC/card"};
constexpr CardPaths kInternalPaths{"/tmp/fuse_i/MISC", "/tmp/fuse_i/MISC/",
                                   "/tmp/fuse_i/MISC/card"};

struct CloseFile {
    void operator()(FILE* file) const { fclose(file); }
};
using File = std::unique_ptr<FILE, CloseFile>;

enum class Stored { kIdentity, kNone, kUnreadable };

// A damaged file is deleted, one that cannot be read stays.
Stored readIdentity(const char* path, char* out) {
    File file(fopen(path, "r"));
    if (!file) {
        return Stored::kNone;
    }
    char line[CARD_ID_SIZE] = "";
    const bool hasLine = fgets(line, kMaxStoredDigits + 1, file.get()) != nullptr;
    // A folder in the file's place is reported when the file cannot be made.
    const bool unreadable = ferror(file.get()) != 0 && errno != EISDIR;
    file.reset();
    if (unreadable) {
        return Stored::kUnreadable;
    }
    if (!hasLine) {
        return Stored::kNone;
    }
    if (isDigitString(line, sizeof line) == 0) {
        unlink(path);
        return Stored::kNone;
    }
    memcpy(out, line, sizeof line);
    return Stored::kIdentity;
}

// Returns a negative number when the generator yields nothing but zeros.
std::int64_t drawIdentity() {
    srand(static_cast<unsigned>(time(nullptr)));
    std::int64_t random = 0;
    for (int draw = 0; draw < kMaxDraws && random == 0; ++draw) {
        random = rand();
    }
    return random * random - 1;
}

int makeIdentity(const char* path, char* out) {
    const vcore::WriteGuard guard;
    const File file(fopen(path, "w"));
    if (!file) {
        fprintf(stderr, "Failed to create file  %s\n", path);
        return -1;
    }
    // Unbuffered, so that a full card is noticed: an identity that is not stored would not last.
    setvbuf(file.get(), nullptr, _IONBF, 0);
    const std::int64_t identity = drawIdentity();
    if (identity < 0) {
        fputs("Failed to get random number\n", stderr);
        return -1;
    }
    char text[CARD_ID_SIZE] = "";
    snprintf(text, sizeof text, "%lld", static_cast<long long>(identity));
    if (fputs(text, file.get()) < 0) {
        fputs("Failed to get write card_id to file\n", stderr);
        // Its first digits would be another identity.
        unlink(path);
        return -1;
    }
    memcpy(out, text, sizeof text);
    return 0;
}

}  // namespace

int getCardIDStr(char* out) {
    return getCardIDStrExt(out, CARD_STORAGE_SD);
}

int getCardIDStrExt(char* out, int storage) {
    if (out == nullptr) {
        fputs("Cannot call with null pointer\n", stderr);
        return -1;
    }
    const CardPaths& paths = storage == CARD_STORAGE_INTERNAL ? kInternalPaths : kSdPaths;
    memcpy(out, kNoIdentity, sizeof kNoIdentity);

    struct stat entry;
    if (stat(paths.folderEntry, &entry) == 0) {
        if (!S_ISDIR(entry.st_mode)) {
            fprintf(stderr, "Path:%s exists and is a NOT folder\n", paths.folder);
            return -1;
        }
        switch (readIdentity(paths.file, out)) {
            case Stored::kIdentity:
                return 0;
            case Stored::kUnreadable:
                fprintf(stderr, "Failed to read file  %s\n", paths.file);
                return -1;
            case Stored::kNone:
                break;
        }
    } else if (mkdir(paths.folder, 0777) != 0) {
        fprintf(stderr, "Failed to create folder:%s\n", paths.folder);
        return -1;
    }
    return makeIdentity(paths.file, out);
}

int isDigitString(const char* text, size_t length) {
    for (size_t i = 0; i < length && text[i] != '\0'; ++i) {
        if (text[i] < '0' || text[i] > '9') {
            return 0;
        }
    }
    return 1;
}

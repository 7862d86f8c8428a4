// The file names of a group's members, made from the group's numbers and the item's own name.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>

// Group numbers from this one on are written as two letters, AA first, BA after AZ.
constexpr uint32_t kFirstLetteredGroup = 1001;
constexpr uint32_t kAlphabet = 26;

// A file name and its terminating zero.
using FileNameText = std::array<char, kFileNameSize + 1>;

enum class MemberNameUse {
    kFiles,      // the names of the files themselves
    kDurations,  // the names under which the durations of a group's videos are asked for
};

// The number of a video's first chapter. Asks for the camera's model number once, when it is
// needed.
class ChapterNumbers {
  public:
    [[nodiscard]] uint32_t first();

  private:
    std::optional<uint32_t> mFirst;
};

class MemberNames {
  public:
    // item: the group's record; must outlive the object. chapters: asked when the group is a
    // chaptered video. An item of another content type has no members to name; that is logged.
    MemberNames(const db_item_record& item, uint32_t groupNumber, MemberNameUse use,
                ChapterNumbers& chapters);

    // Returns the name of one member. Member 0 of a chaptered video has the item's own name.
    [[nodiscard]] FileNameText name(uint32_t member) const;

    // Returns what name fills in, with a printf conversion for each number, for the log.
    [[nodiscard]] std::array<char, 16> format() const;

  private:
    // The numbers that follow the letters at the start of a name.
    enum class Numbering {
        kNone,
        kGroupLetters,  // two letters for the group, then the member
        kGroupNumber,   // the group, then the member
        kChapter,       // the chapter, then the group
    };

    struct Form {
        std::array<char, 3> start;  // one or two letters, zero-terminated
        Numbering numbering;
        const char* extension;
    };

    static Form chooseForm(const db_item_record& item, MemberNameUse use);

    const db_item_record& mItem;
    uint32_t mGroupNumber;
    Form mForm;
    uint32_t mFirstChapter = 0;
};

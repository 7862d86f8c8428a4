#include "libvxMediaRTOSDB/src/names/member_names.h"

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <string_view>

#include "libvxMediaRTOSDB/src/records/name_fields.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/vxMediaRTOSDB/model_number.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

bool inRange(char c, char first, char last) {
    return first <= c && c <= last;
}

// The form V, one of the given letters, two group letters, four digits that are not all 0, and one
// of the given extensions.
bool hasGroupLetters(std::string_view name, std::string_view secondLetters,
                     std::initializer_list<std::string_view> extensions) {
    const auto digits = name.substr(4, 4);
    return name[0] == 'V' && secondLetters.find(name[1]) != std::string_view::npos &&
           inRange(name[2], 'A', 'Z') && inRange(name[3], 'A', 'Z') &&
           std::ranges::all_of(digits, [](char c) { return inRange(c, '0', '9'); }) &&
           digits != "0000" && std::ranges::count(extensions, name.substr(8)) != 0;
}

// Group numbers outside the two letters' range keep the letters of the item's own name.
std::array<char, 2> groupLetters(uint32_t groupNumber, const char* itemName) {
    const uint32_t index = groupNumber - kFirstLetteredGroup;
    if (index >= kAlphabet * kAlphabet) {
        return {itemName[2], itemName[3]};
    }
    return {static_cast<char>('A' + index / kAlphabet), static_cast<char>('A' + index % kAlphabet)};
}

}  // namespace

MemberNames::Form MemberNames::chooseForm(const db_item_record& item, MemberNameUse use) {
    const std::string_view name(item.file_name, kFileNameSize);
    switch (item.content_type) {
        case DB_CONTENT_TYPE_GROUPED_VIDEO:
            if (use == MemberNameUse::kDurations ||
                hasGroupLetters(name, "HLMX", {".MP4", ".MRV", ".360", ".LRV", ".THM"})) {
                return {{name[0], name[1]}, Numbering::kGroupLetters, ".MP4"};
            }
            return {{name[0]}, Numbering::kGroupNumber, ".MP4"};
        case DB_CONTENT_TYPE_CHAPTERED_VIDEO:
            if (use == MemberNameUse::kFiles && name.ends_with(".360") &&
                !name.starts_with("VXMF")) {
                return {{'V', name[1]}, Numbering::kChapter, ".360"};
            }
            return {{'V', name[1]}, Numbering::kChapter, ".MP4"};
        case DB_CONTENT_TYPE_BURST:
        case DB_CONTENT_TYPE_TIME_LAPSE_PHOTO:
        case DB_CONTENT_TYPE_NIGHT_LAPSE_PHOTO:
        case DB_CONTENT_TYPE_CONTINUOUS_PHOTO:
            if (hasGroupLetters(name, "PS", {".JPG"})) {
                return {{name[0], name[1]}, Numbering::kGroupLetters, ".JPG"};
            }
            return {{name[0]}, Numbering::kGroupNumber, ".JPG"};
        default:
            UTIL_LOG(UTIL_LOG_WARN, "content type %d unhandled for group",
                     signedWord(item.content_type));
            return {{}, Numbering::kNone, ""};
    }
}

uint32_t ChapterNumbers::first() {
    if (!mFirst) {
        mFirst = static_cast<uint32_t>(usesOneBasedChapters());
    }
    return *mFirst;
}

MemberNames::MemberNames(const db_item_record& item, uint32_t groupNumber, MemberNameUse use,
                         ChapterNumbers& chapters)
    : mItem(item), mGroupNumber(groupNumber), mForm(chooseForm(item, use)) {
    if (mForm.numbering == Numbering::kChapter) {
        mFirstChapter = chapters.first();
    }
}

FileNameText MemberNames::name(uint32_t member) const {
    if (mForm.numbering == Numbering::kChapter && member == 0) {
        return terminated(mItem.file_name);
    }

    FileNameText text = {};
    const char* const start = mForm.start.data();
    const int group = signedWord(mGroupNumber);
    const int number = signedWord(member + mFirstChapter);
    switch (mForm.numbering) {
        case Numbering::kNone:
            break;
        case Numbering::kGroupLetters: {
            const auto letters = groupLetters(mGroupNumber, mItem.file_name);
            std::snprintf(text.data(), text.size(), "%s%c%c%04d%s", start, letters[0], letters[1],
                          number, mForm.extension);
            break;
        }
        case Numbering::kGroupNumber:
            std::snprintf(text.data(), text.size(), "%s%03d%04d%s", start, group, number,
                          mForm.extension);
            break;
        case Numbering::kChapter:
            std::snprintf(text.data(), text.size(), "%s%02d%04d%s", start, number, group,
                          mForm.extension);
            break;
    }
    return text;
}

std::array<char, 16> MemberNames::format() const {
    const char* numbers = "";
    switch (mForm.numbering) {
        case Numbering::kNone:
            break;
        case Numbering::kGroupLetters:
            numbers = "%c%c%04d";
            break;
        case Numbering::kGroupNumber:
            numbers = "%03d%04d";
            break;
        case Numbering::kChapter:
            numbers = "%02d%04d";
            break;
    }
    std::array<char, 16> text = {};
    std::snprintf(text.data(), text.size(), "%s%s%s", mForm.start.data(), numbers, mForm.extension);
    return text;
}

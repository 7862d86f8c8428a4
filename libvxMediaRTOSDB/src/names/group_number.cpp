#include "libvxMediaRTOSDB/src/names/group_number.h"

#include <algorithm>
#include <string_view>

#include "libvxMediaRTOSDB/src/names/member_names.h"
#include "libvxMediaRTOSDB/src/records/name_fields.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

bool isLetter(char character) {
    return character >= 'A' && character <= 'Z';
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

uint32_t letterIndex(char letter) {
    return static_cast<uint32_t>(letter - 'A');
}

uint32_t decimal(std::string_view digits) {
    uint32_t number = 0;
    for (const char digit : digits) {
        number = number * 10 + static_cast<uint32_t>(digit - '0');
    }
    return number;
}

uint32_t numberInName(std::string_view fileName) {
    if (fileName.size() < 4) {
        return 0;
    }
    const std::string_view third = fileName.substr(2, 2);
    if (std::all_of(third.begin(), third.end(), isLetter)) {
        return kFirstLetteredGroup + letterIndex(third[0]) * kAlphabet + letterIndex(third[1]);
    }
    if (!std::all_of(third.begin(), third.end(), isDigit)) {
        return 0;
    }
    return decimal(isDigit(fileName[1]) ? fileName.substr(1, 3) : third);
}

}  // namespace

uint32_t groupNumber(const db_item_record& item, const db_group_info& group) {
    if (group.group_number != 0) {
        return group.group_number;
    }
    const uint32_t number = numberInName(textOf(item.file_name));
    UTIL_LOG(UTIL_LOG_DEBUG, "using group number %d\n", signedWord(number));
    return number;
}

// What card.json says of one file, member by member.
#pragma once

#include "simulator/card/json_place.h"
#include "simulator/card/media_item.h"

namespace simulator {

inline constexpr char kContentTypeMember[] = "content_type";
inline constexpr char kMissingMember[] = "missing";

// A content type from 0 to 12. Throws InputError.
[[nodiscard]] uint32_t readContentType(const JsonPlace& value);

// Makes the listed numbers missing members of the item: their files leave it, and where they lie
// outside its numbers, its numbers reach out to them. Throws InputError.
void setMissing(const JsonPlace& numbers, MediaItem& item);

// Sets one member other than kMissingMember. item: the one that the file belongs to.
// Throws InputError when there is no such member or its value does not fit.
void setFileMember(const std::string& name, const JsonPlace& value, MediaItem& item,
                   MediaFile& file);

}  // namespace simulator

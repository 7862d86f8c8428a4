// The records of the media database as members of a result.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "tools/mediactl/output.h"
#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>

namespace mediactl {

// The name of a content type; null for one that has none.
Json kindName(uint32_t contentType);

// 32 hexadecimal digits; null for a GUMI of zeros, which stands for none.
Json gumiJson(const db_gumi& gumi);

// A name as it stands in a record: it ends at its first zero or with the field.
std::string nameText(std::span<const char> field);

Json itemJson(const db_item_record& item);

// memberMask: read when num_missing is not 0. highlightMask: empty when the group has none.
Json groupJson(const db_group_info& group, std::span<const uint8_t> memberMask,
               std::span<const uint8_t> highlightMask);

Json videoJson(const db_video_specific_info& video, std::span<const uint32_t> highlights);
Json moreInfoJson(const db_more_info& info);

}  // namespace mediactl

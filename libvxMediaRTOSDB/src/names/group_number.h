// The number of a group.
#pragma once

#include <cstdint>

#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>

// Returns the number of the group's record or, when that is 0, the number that the item's file name
// carries, which is logged: two letters at the third place counted from 1001 (AA), else three
// digits at the second place, else two digits at the third place. 0 when it carries none.
[[nodiscard]] uint32_t groupNumber(const db_item_record& item, const db_group_info& group);

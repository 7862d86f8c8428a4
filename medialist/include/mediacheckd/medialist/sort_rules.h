// The sort-rules document: JSON that describes an order of media.
//
//   {"sort_rules": ["hilighted_first", "media_type", "date_by_day_newest_first"],
//    "media_type_order": ["video", "photo"]}
#pragma once

#include <mediacheckd/medialist/comparators.h>

// Other components find this by name.
#pragma GCC visibility push(default)

// Reads a document. Null stands for the default order: newest day first, within a day the smallest
// first. Unknown rules and media classes are ignored.
// Returns a CompoundCompare that the caller deletes, or null after logging what is wrong.
[[nodiscard]] Comparinator* create(const char* json);

#pragma GCC visibility pop

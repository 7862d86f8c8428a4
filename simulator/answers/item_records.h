// The records of an item in the order in which responses carry them.
#pragma once

#include "simulator/answers/reply_record.h"
#include "simulator/card/media_item.h"

namespace simulator {

// The item record of one file of the item.
void appendItemRecord(Message& reply, const MediaItem& item, const MediaFile& file);

// The GUMI of a file and, where it has one, its parent's.
void appendGumis(Message& reply, const MediaFile& file);

// The video specific information of a file with its highlights.
void appendVideoInfo(Message& reply, const MediaFile& file);

// The group information of an item with the masks that belong to it.
void appendGroupInfo(Message& reply, const MediaItem& item);

// Appends the records of one entry unless a message that starts with headerSize further bytes would
// become too long. Returns whether it did.
[[nodiscard]] bool appendWhereItFits(Message& records, const Message& entry,
                                     std::size_t headerSize);

}  // namespace simulator

#include "simulator/answers/item_records.h"

#include <algorithm>

#include "libvxMediaRTOSDB/src/records/member_mask.h"

namespace simulator {

namespace {

class Mask {
  public:
    explicit Mask(const db_group_info& group)
        : mFirst(group.first_number), mBytes(static_cast<std::size_t>(maskSize(group))) {}

    void mark(uint32_t number) { bitByte(number) |= bitOf(number); }
    void clear(uint32_t number) { bitByte(number) &= ~bitOf(number); }
    [[nodiscard]] const Message& bytes() const { return mBytes; }

  private:
    std::byte& bitByte(uint32_t number) { return mBytes[(number - mFirst) / 8]; }
    [[nodiscard]] std::byte bitOf(uint32_t number) const {
        return std::byte{0x80} >> ((number - mFirst) % 8);
    }

    uint32_t mFirst;
    Message mBytes;
};

uint32_t highlightCount(const MediaItem& item, const MediaFile& file) {
    const bool ofNumbers = isPhotoGroup(item.contentType());
    return static_cast<uint32_t>(ofNumbers ? item.highlightedNumbers.size()
                                           : file.highlights.size());
}

}  // namespace

void appendItemRecord(Message& reply, const MediaItem& item, const MediaFile& file) {
    db_item_record record = file.record;
    record.highlight_count = highlightCount(item, file);
    appendRecord(reply, record);
}

void appendGumis(Message& reply, const MediaFile& file) {
    appendRecord(reply, file.gumi);
    if ((file.record.attributes & ITEM_ATTRIBUTE_PARENT_GUMI) != 0) {
        appendRecord(reply, file.parentGumi);
    }
}

void appendVideoInfo(Message& reply, const MediaFile& file) {
    db_video_specific_info video = file.video;
    video.highlight_count = static_cast<uint32_t>(file.highlights.size());
    appendRecord(reply, video);
    for (const uint32_t highlight : file.highlights) {
        u32le word{};
        word = highlight;
        appendRecord(reply, word);
    }
}

void appendGroupInfo(Message& reply, const MediaItem& item) {
    db_group_info group{};
    group.group_number = item.groupNumber;
    group.first_number = item.firstNumber;
    group.last_number = item.lastNumber;
    const uint32_t numbers = item.lastNumber - item.firstNumber + 1;
    group.num_missing = numbers - static_cast<uint32_t>(item.files.size());
    uint64_t size = 0;
    for (const MediaFile& file : item.files) {
        size += file.record.size;
    }
    group.group_size = size;
    appendRecord(reply, group);

    if (group.num_missing != 0) {
        Mask members(group);
        for (const MediaFile& file : item.files) {
            members.mark(file.number);
        }
        appendBytes(reply, members.bytes());
    }
    if (isPhotoGroup(item.contentType()) && !item.highlightedNumbers.empty()) {
        Mask highlights(group);
        for (uint32_t number = item.firstNumber; number <= item.lastNumber; ++number) {
            highlights.mark(number);
        }
        for (const uint32_t number : item.highlightedNumbers) {
            highlights.clear(number);
        }
        appendBytes(reply, highlights.bytes());
    }
}

bool appendWhereItFits(Message& records, const Message& entry, std::size_t headerSize) {
    if (headerSize + records.size() + entry.size() > kMessageMax) {
        return false;
    }
    appendBytes(records, entry);
    return true;
}

}  // namespace simulator

// Reads the records of a response one after the other, never beyond the bytes received.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>

// Returns the record that starts at offset, as far as it came in units of unit bytes; the rest of
// it is 0.
template <typename Record>
[[nodiscard]] Record bytesReceived(std::span<const uint8_t> bytes, size_t offset = 0,
                                   size_t unit = 1) {
    static_assert(alignof(Record) == 1);
    Record record = {};
    if (offset < bytes.size()) {
        const size_t size = std::min(bytes.size() - offset, sizeof record);
        std::memcpy(&record, bytes.data() + offset, size - size % unit);
    }
    return record;
}

// The same for a record of 32-bit words: a word that did not come whole is 0.
template <typename Record>
[[nodiscard]] Record wordsReceived(std::span<const uint8_t> bytes, size_t offset = 0) {
    static_assert(sizeof(Record) % sizeof(uint32_t) == 0);
    return bytesReceived<Record>(bytes, offset, sizeof(uint32_t));
}

// The records it returns point into the bytes, which must outlive them.
class RecordReader {
  public:
    explicit RecordReader(std::span<const uint8_t> bytes, size_t offset = 0)
        : mBytes(bytes), mOffset(offset) {}

    // Returns the next record and steps over it; null, without a step, when it does not lie wholly
    // inside the bytes.
    template <typename Record>
    [[nodiscard]] const Record* read() {
        const auto records = readArray<Record>(1);
        return records ? records->data() : nullptr;
    }

    // As read, for count records in a row.
    template <typename Record>
    [[nodiscard]] std::optional<std::span<const Record>> readArray(uint64_t count) {
        static_assert(alignof(Record) == 1, "a record may lie at any address");
        if (mOffset > mBytes.size() || count > (mBytes.size() - mOffset) / sizeof(Record)) {
            return std::nullopt;
        }
        const auto* first = reinterpret_cast<const Record*>(mBytes.data() + mOffset);
        mOffset += static_cast<size_t>(count) * sizeof(Record);
        return std::span(first, static_cast<size_t>(count));
    }

    // Where the next record starts, in bytes from the start of all of them.
    [[nodiscard]] size_t offset() const { return mOffset; }

  private:
    std::span<const uint8_t> mBytes;
    size_t mOffset;
};

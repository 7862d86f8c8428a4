// Writes the keys of a JSON object that a field mask selects, each by one line that names its
// field, its key and its value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "libvxMediaRTOSDB/src/http/text/text_buffer.h"
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/query_settings.h>

// Texts joined by ",".
class JoinedText {
  public:
    // prefix: written before the first text; must outlive this.
    JoinedText(TextBuffer* buffer, std::string_view prefix) : mBuffer(buffer), mPrefix(prefix) {}

    // The "," is a constant of its own: joined as any prefix, it slows a whole list by a fifth.
    template <typename... Parts>
    void add(SourcePlace place, const Parts&... parts) {
        if (mFirst) {
            mBuffer->append(place, mPrefix, parts...);
        } else {
            mBuffer->append(place, ',', parts...);
        }
        mFirst = false;
    }

  private:
    TextBuffer* mBuffer;
    std::string_view mPrefix;
    bool mFirst = true;
};

class KeyWriter {
  public:
    // prefix: written before the first key, "," before each further one.
    KeyWriter(TextBuffer* buffer, uint32_t fieldMask, std::string_view prefix)
        : mBuffer(buffer), mKeys(buffer, prefix), mFieldMask(fieldMask) {}

    // "key":"123"
    template <size_t Size>
    void number(uint32_t field, const char (&key)[Size], uint32_t value,
                SourcePlace place = here()) {
        write(place, field, "\"", key, "\":\"", value, "\"");
    }
    template <size_t Size>
    void number(uint32_t field, const char (&key)[Size], uint64_t value,
                SourcePlace place = here()) {
        write(place, field, "\"", key, "\":\"", value, "\"");
    }
    template <size_t Size>
    void number(uint32_t field, const char (&key)[Size], int32_t value,
                SourcePlace place = here()) {
        write(place, field, "\"", key, "\":\"", value, "\"");
    }

    // "key":"1" or "key":"0"
    template <size_t Size>
    void flag(uint32_t field, const char (&key)[Size], bool value, SourcePlace place = here()) {
        write(place, field, "\"", key, "\":\"", value ? '1' : '0', "\"");
    }

    // "key":"text", the text escaped
    template <size_t Size>
    void text(uint32_t field, const char (&key)[Size], std::string_view value,
              SourcePlace place = here()) {
        write(place, field, "\"", key, "\":\"", JsonText{value}, "\"");
    }

    // "key":"00ff..."
    template <size_t Size>
    void hex(uint32_t field, const char (&key)[Size], std::span<const uint8_t, 16> value,
             SourcePlace place = here()) {
        write(place, field, "\"", key, "\":\"", HexText{value}, "\"");
    }

    // Parts that make up a key and its value.
    template <typename... Parts>
    void write(SourcePlace place, uint32_t field, const Parts&... parts) {
        if (selects(field)) {
            mKeys.add(place, parts...);
        }
    }

    // A key whose value is a list: addElements(JoinedText&) adds what stands between the opening
    // text, key included, and the closing one.
    template <size_t OpeningSize, size_t ClosingSize, typename AddElements>
    void list(uint32_t field, const char (&opening)[OpeningSize],
              const char (&closing)[ClosingSize], AddElements addElements,
              SourcePlace place = here()) {
        if (!selects(field)) {
            return;
        }
        mKeys.add(place, opening);
        JoinedText elements(mBuffer, "");
        addElements(elements);
        mBuffer->append(place, closing);
    }

    [[nodiscard]] bool selects(uint32_t field) const { return (mFieldMask & field) != 0; }

    // HTTP_OK, or HTTP_INTERNAL_ERROR when something did not fit into the buffer.
    [[nodiscard]] int status() const { return mBuffer->complete() ? HTTP_OK : HTTP_INTERNAL_ERROR; }

  private:
    TextBuffer* mBuffer;
    JoinedText mKeys;
    uint32_t mFieldMask;
};

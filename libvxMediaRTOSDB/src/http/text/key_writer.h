// Writes the keys of a JSON object that a field mask selects, each by one line that names its
// field, its key and its value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "libvxMediaRTOSDB/src/http/text/key_opening.h"
#include "libvxMediaRTOSDB/src/http/text/text_buffer.h"
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/query_settings.h>

// Where keys are written: the end of a buffer's text, which the buffer knows again when this ends.
class TextEnd {
  public:
    explicit TextEnd(TextBuffer* buffer) : mBuffer(buffer), mEnd(buffer->end()) {}
    ~TextEnd() { mBuffer->endAt(mEnd); }
    TextEnd(const TextEnd&) = delete;
    TextEnd& operator=(const TextEnd&) = delete;

    template <typename... Parts>
    void append(SourcePlace place, const Parts&... parts) {
        mEnd = mBuffer->appendAt(mEnd, place, parts...);
    }

    [[nodiscard]] bool complete() const { return mBuffer->complete(); }

  private:
    TextBuffer* mBuffer;
    char* mEnd;
};

// Texts joined by ",".
class JoinedText {
  public:
    explicit JoinedText(TextEnd* end) : mEnd(end) {}

    template <typename... Parts>
    void add(SourcePlace place, const Parts&... parts) {
        mEnd->append(place, std::string_view(",").substr(mFirst), parts...);
        mFirst = false;
    }

  private:
    TextEnd* mEnd;
    bool mFirst = true;
};

class KeyWriter {
  public:
    // prefix: written before the first key, "," before each further one.
    KeyWriter(TextBuffer* buffer, uint32_t fieldMask, std::string_view prefix)
        : mEnd(buffer), mPrefix(prefix), mFieldMask(fieldMask) {}

    // "key":"123"
    template <KeyName Key>
    void number(uint32_t field, uint32_t value, SourcePlace place = here()) {
        quoted<Key>(place, field, value);
    }
    template <KeyName Key>
    void number(uint32_t field, uint64_t value, SourcePlace place = here()) {
        quoted<Key>(place, field, value);
    }
    template <KeyName Key>
    void number(uint32_t field, int32_t value, SourcePlace place = here()) {
        quoted<Key>(place, field, value);
    }

    // "key":"1" or "key":"0"
    template <KeyName Key>
    void flag(uint32_t field, bool value, SourcePlace place = here()) {
        quoted<Key>(place, field, value ? '1' : '0');
    }

    // "key":"word", a text of the library's own
    template <KeyName Key>
    void word(uint32_t field, std::string_view value, SourcePlace place = here()) {
        quoted<Key>(place, field, value);
    }

    // "key":"text", the text escaped
    template <KeyName Key>
    void text(uint32_t field, std::string_view value, SourcePlace place = here()) {
        quoted<Key>(place, field, JsonText{value});
    }

    // "key":"00ff..."
    template <KeyName Key>
    void hex(uint32_t field, std::span<const uint8_t, 16> value, SourcePlace place = here()) {
        quoted<Key>(place, field, HexText{value});
    }

    // Parts that make up a key and its value.
    template <typename... Parts>
    void write(SourcePlace place, uint32_t field, const Parts&... parts) {
        if (selects(field)) {
            append(place, std::string_view(",").substr(mFirst), parts...);
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
        append(place, std::string_view(",").substr(mFirst), opening);
        JoinedText elements(&mEnd);
        addElements(elements);
        mEnd.append(place, closing);
    }

    [[nodiscard]] bool selects(uint32_t field) const { return (mFieldMask & field) != 0; }

    // HTTP_OK, or HTTP_INTERNAL_ERROR when something did not fit into the buffer.
    [[nodiscard]] int status() const { return mEnd.complete() ? HTTP_OK : HTTP_INTERNAL_ERROR; }

  private:
    template <KeyName Key, typename Value>
    void quoted(SourcePlace place, uint32_t field, const Value& value) {
        if (selects(field)) {
            append(place, openingOf<Key>().asFirst(mFirst), value, '"');
        }
    }

    template <typename... Parts>
    void append(SourcePlace place, const Parts&... parts) {
        if (mPrefix.empty()) {
            mEnd.append(place, parts...);
        } else {
            mEnd.append(place, mPrefix, parts...);
            mPrefix = {};
        }
        mFirst = false;
    }

    TextEnd mEnd;
    std::string_view mPrefix;
    uint32_t mFieldMask;
    bool mFirst = true;
};

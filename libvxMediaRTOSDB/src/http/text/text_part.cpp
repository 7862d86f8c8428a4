#include "libvxMediaRTOSDB/src/http/text/text_part.h"

#include "libvxMediaRTOSDB/src/records/hex_digits.h"

namespace {

constexpr std::string_view kControlEscape = "\\u00";

constexpr bool isControl(char character) {
    return static_cast<unsigned char>(character) < 0x20;
}

constexpr bool isPlain(char character) {
    return !isControl(character) && character != '"' && character != '\\';
}

char* writeEscaped(char* place, char character) {
    if (isControl(character)) {
        place = write(place, kControlEscape);
        const uint8_t code[] = {static_cast<uint8_t>(character)};
        const auto digits = hexDigits(std::span(code), HexCase::kLower);
        return write(place, std::string_view(digits.data(), digits.size()));
    }
    *place++ = '\\';
    *place++ = character;
    return place;
}

// Tells whether any of eight characters must be escaped. A subtraction borrows into the top bit of
// each byte that is below what is taken off; those at and above 0x80 are plain.
bool hasEscapes(uint64_t word) {
    constexpr uint64_t kEach = 0x0101010101010101;
    const auto below = [](uint64_t bytes, uint64_t limit) {
        return (bytes - kEach * limit) & ~bytes;
    };
    const uint64_t found =
        below(word, 0x20) | below(word ^ kEach * '"', 1) | below(word ^ kEach * '\\', 1);
    return (found & kEach * 0x80) != 0;
}

// Copies the leading characters that stand as they are, eight at a time, and takes them off.
char* copyPlainWords(char* place, std::string_view* text) {
    uint64_t word;
    while (text->size() >= sizeof word) {
        std::memcpy(&word, text->data(), sizeof word);
        if (hasEscapes(word)) {
            break;
        }
        std::memcpy(place, &word, sizeof word);
        place += sizeof word;
        text->remove_prefix(sizeof word);
    }
    return place;
}

}  // namespace

// Copies in and out: a loop over memory that cannot overlap is one the compiler vectorizes.
char* write(char* place, HexText hex) {
    uint8_t bytes[decltype(hex.bytes)::extent];
    std::memcpy(bytes, hex.bytes.data(), sizeof bytes);
    const auto digits = hexDigits(std::span<const uint8_t, sizeof bytes>(bytes), HexCase::kLower);
    std::memcpy(place, digits.data(), digits.size());
    return place + digits.size();
}

size_t exactSize(JsonText json) {
    size_t size = 0;
    for (const char character : json.text) {
        if (isPlain(character)) {
            size += 1;
        } else {
            size += isControl(character) ? kControlEscape.size() + 2 : 2;
        }
    }
    return size;
}

char* write(char* place, JsonText json) {
    place = copyPlainWords(place, &json.text);
    for (const char character : json.text) {
        if (isPlain(character)) {
            *place++ = character;
        } else {
            place = writeEscaped(place, character);
        }
    }
    return place;
}

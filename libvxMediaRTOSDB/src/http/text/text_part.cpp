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
    for (const char character : json.text) {
        if (isPlain(character)) {
            *place++ = character;
        } else {
            place = writeEscaped(place, character);
        }
    }
    return place;
}

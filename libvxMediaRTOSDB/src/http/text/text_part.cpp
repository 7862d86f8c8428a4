#include <mediacheckd/vxMediaRTOSDB/text_part.h>

namespace {

constexpr std::string_view kControlEscape = "\\u00";

constexpr bool isControl(char character) {
    return static_cast<unsigned char>(character) < 0x20;
}

constexpr bool isPlain(char character) {
    return !isControl(character) && character != '"' && character != '\\';
}

constexpr char hexDigit(unsigned nibble) {
    return static_cast<char>(nibble < 10 ? '0' + nibble : 'a' + nibble - 10);
}

char* writeEscaped(char* place, char character) {
    if (isControl(character)) {
        place = write(place, kControlEscape);
        *place++ = hexDigit(static_cast<unsigned char>(character) >> 4);
        *place++ = hexDigit(character & 0xF);
        return place;
    }
    *place++ = '\\';
    *place++ = character;
    return place;
}

}  // namespace

// Copies in and out: a loop over memory that cannot overlap is one the compiler vectorizes.
char* write(char* place, HexText hex) {
    constexpr size_t kBytes = decltype(hex.bytes)::extent;
    uint8_t bytes[kBytes];
    char digits[2 * kBytes];
    std::memcpy(bytes, hex.bytes.data(), sizeof bytes);
    for (size_t i = 0; i < kBytes; i++) {
        digits[2 * i] = hexDigit(bytes[i] >> 4);
        digits[2 * i + 1] = hexDigit(bytes[i] & 0xF);
    }
    std::memcpy(place, digits, sizeof digits);
    return place + sizeof digits;
}

size_t exactSize(JsonText json) {
    size_t size = 0;
    for (const char character : json.text) {
        if (isPlain(character))
            size += 1;
        else
            size += isControl(character) ? kControlEscape.size() + 2 : 2;
    }
    return size;
}

char* write(char* place, JsonText json) {
    for (const char character : json.text) {
        if (isPlain(character))
            *place++ = character;
        else
            place = writeEscaped(place, character);
    }
    return place;
}

#include "libvxMediaRTOSDB/src/text_part.h"

namespace {

constexpr char kHexDigits[] = "0123456789abcdef";
constexpr std::string_view kControlEscape = "\\u00";

bool isControl(char character) {
    return static_cast<unsigned char>(character) < 0x20;
}

bool isPlain(char character) {
    return !isControl(character) && character != '"' && character != '\\';
}

char* writeHex(char* place, uint8_t byte) {
    *place++ = kHexDigits[byte >> 4];
    *place++ = kHexDigits[byte & 0xF];
    return place;
}

}  // namespace

char* write(char* place, HexText hex) {
    for (const uint8_t byte : hex.bytes)
        place = writeHex(place, byte);
    return place;
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
        if (isControl(character)) {
            place = writeHex(write(place, kControlEscape), static_cast<uint8_t>(character));
            continue;
        }
        if (!isPlain(character))
            *place++ = '\\';
        *place++ = character;
    }
    return place;
}

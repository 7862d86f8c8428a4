// What opens a key whose value is quoted: ,"key":"
//
// It is made when the program is compiled and copied with a fixed size, whatever its own: that
// takes fewer steps than its parts. What is copied too much is written over by what follows.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

// Characters that are copied, and that a text may so reach behind its end.
constexpr size_t kKeyOpeningCopy = 16;

struct KeyOpening {
    const char* text;
    size_t size;

    // Without the leading ",", as the first key of an object has it.
    [[nodiscard]] constexpr KeyOpening asFirst(bool first) const {
        return {text + first, size - first};
    }
};

template <size_t Size>
struct KeyName {
    char text[Size];

    // NOLINTNEXTLINE(google-explicit-constructor): a name is written as a text
    consteval KeyName(const char (&name)[Size]) { std::copy_n(name, Size, text); }
};

namespace key_opening {

struct Text {
    char text[1 + kKeyOpeningCopy] = {};
    size_t size = 0;

    consteval void add(const char* part, size_t partSize) {
        std::copy_n(part, partSize, text + size);
        size += partSize;
    }
};

template <KeyName Name>
consteval Text join() {
    Text joined;
    joined.add(",\"", 2);
    joined.add(Name.text, sizeof Name.text - 1);
    joined.add("\":\"", 3);
    return joined;
}

template <KeyName Name>
inline constexpr Text kText = join<Name>();

}  // namespace key_opening

template <KeyName Name>
constexpr KeyOpening openingOf() {
    static_assert(key_opening::kText<Name>.size <= kKeyOpeningCopy);
    return {key_opening::kText<Name>.text, key_opening::kText<Name>.size};
}

constexpr size_t maxSize(KeyOpening) {
    return kKeyOpeningCopy;
}

constexpr size_t exactSize(KeyOpening opening) {
    return opening.size;
}

inline char* write(char* place, KeyOpening opening) {
    std::memcpy(place, opening.text, kKeyOpeningCopy);
    return place + opening.size;
}

// The fixed-width names of the records, which are not zero-terminated on the wire.
#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

// Writes the characters of a field with a terminating zero behind them.
template <size_t Size>
void terminate(const char (&field)[Size], std::array<char, Size + 1>* text) {
    std::memcpy(text->data(), field, Size);
    text->back() = '\0';
}

// Returns them.
template <size_t Size>
std::array<char, Size + 1> terminated(const char (&field)[Size]) {
    std::array<char, Size + 1> text;
    terminate(field, &text);
    return text;
}

// Returns the characters of a field up to its first zero, if it has one.
template <size_t Size>
std::string_view textOf(const char (&field)[Size]) {
    return {field, strnlen(field, Size)};
}

// Fills a field with the text's characters up to its first zero, at most the field's width; the
// rest of the field is zero. The text may be such a field itself.
template <size_t Size>
void fillField(char (&field)[Size], const char* text) {
    const size_t length = strnlen(text, Size);
    std::memcpy(field, text, length);
    std::memset(field + length, 0, Size - length);
}

// Tells whether the text is exactly length characters long; a null text is not.
inline bool hasLength(const char* text, size_t length) {
    return text && strnlen(text, length + 1) == length;
}

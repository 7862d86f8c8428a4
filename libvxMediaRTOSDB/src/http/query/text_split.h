// Splits a text into its pieces.
#pragma once

#include <algorithm>
#include <string_view>

// Takes the next piece, up to the separator or the end, off the text; empty pieces are passed over.
// Returns an empty piece when the text holds no more.
inline std::string_view takePiece(std::string_view* text, char separator) {
    text->remove_prefix(std::min(text->find_first_not_of(separator), text->size()));
    const std::string_view piece = text->substr(0, text->find(separator));
    text->remove_prefix(piece.size());
    return piece;
}

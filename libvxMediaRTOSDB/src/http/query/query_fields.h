// The names that select JSON keys in the "fields" value of a media-list query.
#pragma once

#include <cstdint>
#include <string_view>

// Returns the MediaField bits that a name selects, 0 for an unknown name. Letter case matters.
[[nodiscard]] uint32_t fieldsOf(std::string_view name);

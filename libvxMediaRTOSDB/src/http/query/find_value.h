// The lookup behind findQueryValue and the keys of the queries.
#pragma once

#include <span>
#include <string_view>

// As findQueryValueN, for texts and a buffer that are there.
[[nodiscard]] int findValue(std::string_view query, std::string_view key, std::span<char> value,
                            int skip);

// Reads one key of a query with the checks that every key passes.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

constexpr size_t kQueryValueSize = 64;  // of most values, the terminating zero included

// A key and the messages of its checks. A check without a message is not made: the key may be
// absent, or its value empty.
struct QueryKey {
    const char* name;
    const char* absent;
    const char* empty;
    const char* tooLong;
    const char* repeated;
};

struct QueryValue {
    int status;  // HTTP_OK, or that of the check that failed, which is logged
    bool found;
    std::string_view text;  // zero-terminated; empty when the value was not found
};

// Decodes the key's first value into buffer, which must outlive what is returned.
[[nodiscard]] QueryValue readQueryValue(std::string_view query, const QueryKey& key,
                                        std::span<char> buffer);

// Returns HTTP_OK when the query has the key at most once, else HTTP_BAD_REQUEST, logged.
[[nodiscard]] int checkNotRepeated(std::string_view query, const QueryKey& key);

// Logs the message about a key's value and returns the status.
[[nodiscard]] int rejectValue(int status, const char* message, const QueryKey& key,
                              const QueryValue& value);

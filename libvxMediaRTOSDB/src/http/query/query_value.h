// Reads one key of a query with the checks that every key passes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

constexpr size_t kQueryValueSize = 64;  // of most values, the terminating zero included

constexpr const char* kRequiredFieldEmpty = "Required field '%s' has no value\n";
constexpr const char* kFieldEmpty = "Field '%s' has no value\n";
constexpr const char* kRequiredFieldRepeated = "Required field '%s' found multiple times\n";
constexpr const char* kInvalidValue = "%s=%s is an invalid value\n";
constexpr const char* kFieldRepeated = "Field '%s' found multiple times\n";

// A key and the messages of its checks. A check without a message is not made: the key may be
// absent, or its value empty.
struct QueryKey {
    const char* name;
    const char* absent = nullptr;
    const char* empty = nullptr;
    const char* tooLong = "Insufficient storage for %s=%s\n";
    const char* repeated = nullptr;
};

struct QueryValue {
    int status;             // HTTP_OK, or that of the check that failed, which is logged
    std::string_view text;  // zero-terminated; empty when the key is absent
};

// Decodes the key's first value, which ends at its first NUL, into buffer, which must outlive what
// is returned.
[[nodiscard]] QueryValue readQueryValue(std::string_view query, const QueryKey& key,
                                        std::span<char> buffer);

// Reads a decimal number of one to ten digits that fits 32 bits. Returns false for any other text.
[[nodiscard]] bool parseNumber(std::string_view digits, uint32_t* number);

// Reads the number that a key has, once; *number stays when the key is absent. Returns HTTP_OK, or
// the status of the check that failed, which is logged.
[[nodiscard]] int readQueryNumber(std::string_view query, const QueryKey& key, uint32_t* number);

// Returns HTTP_OK when the query has the key at most once, else HTTP_BAD_REQUEST, logged.
[[nodiscard]] int checkNotRepeated(std::string_view query, const QueryKey& key);

// Logs the message about a key's value and returns the status.
[[nodiscard]] int rejectValue(int status, const char* message, const QueryKey& key,
                              const QueryValue& value);

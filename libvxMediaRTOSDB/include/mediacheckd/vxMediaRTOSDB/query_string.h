// Looks up and decodes the values of an HTTP query string: keys and values joined by "&".
#pragma once

// The negative results of a lookup.
enum QueryLookup : int {
    QUERY_NOT_FOUND = -1,
    QUERY_NO_ROOM = -2,
    QUERY_INTERNAL = -3,
};

extern "C" {
#pragma GCC visibility push(default)

// Decodes one value: "%" and two hexadecimal digits become the byte they spell, any other "%"
// stays, and "+" becomes a blank when plusToSpace is not 0.
// sourceLength: characters of source; below 1 for an empty value, as is a null source.
// destinationSize: bytes of destination, the terminating zero included.
// Returns the number of characters decoded, or -1 when they do not fit; destination then holds
// those that do.
[[nodiscard]] int urlDecode(const char* source, int sourceLength, char* destination,
                            int destinationSize, int plusToSpace);

// Finds the first value of a key, whose letter case does not matter, and decodes it with plus to
// blank.
// query: queryLength characters. key: zero-terminated.
// value: valueSize bytes; ends with a zero, and is empty when nothing is found.
// Returns the value's length, 0 for an empty value, or
//   QUERY_NOT_FOUND when the query does not have the key, query or key is null or queryLength is
//     below 1,
//   QUERY_NO_ROOM when the value does not fit (value then holds what fits), or value is null or
//     valueSize is below 1 (nothing is written then),
//   QUERY_INTERNAL when the decoder fails otherwise.
[[nodiscard]] int findQueryValue(const char* query, int queryLength, const char* key, char* value,
                                 int valueSize);

// As findQueryValue, for the occurrence of the key after skip earlier ones. A negative skip acts as
// 0, for the first.
[[nodiscard]] int findQueryValueN(const char* query, int queryLength, const char* key, char* value,
                                  int valueSize, int skip);

#pragma GCC visibility pop
}

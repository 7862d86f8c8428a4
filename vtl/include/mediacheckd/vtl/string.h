// Strings: values that own a private copy of a zero-terminated text, or have no text at all (null),
// which is not the same as an empty text.
//
// 0 is success; 1 is failure: a null argument or a value that is not a string, unless told
// otherwise.
#pragma once

#include <mediacheckd/vtl/value.h>

#ifdef __cplusplus
extern "C" {
#endif
// Exported: components link these by name.
#pragma GCC visibility push(default)

// Returns a new string without text, which the caller destroys, or null.
vtl_value* vtl_string_create(void);

// Returns a new string with a copy of the text, which the caller destroys, or null. The string has
// no text when text is null or memory suffices for the record alone.
vtl_value* vtl_string_create_from(const char* text);

// Keeps a copy of the text, which may lie in the old one, and releases the old one.
// 1 also when memory does not suffice; the string then has no text.
int vtl_string_set(vtl_value* value, const char* text);

// Stores the text pointer, null when there is no text. It stays the string's and is valid until
// the string changes.
int vtl_string_get(const vtl_value* value, char** out);

// Copies the text into a buffer of size bytes as strncpy does: filled up with zeros, and without a
// closing zero when the text does not fit. 1 also when there is no text.
int vtl_string_get_copy(const vtl_value* value, char* buffer, unsigned size);

// Sets type and table. A record that was a string keeps its text, any other has none.
int vtl_string_init(vtl_value* value);

// Release the text, if any; the string then has none. 1 only for null: a value of another type
// stays as it is.
int vtl_string_deinit(vtl_value* value);
int vtl_string_clear(vtl_value* value);

// Run the destination's deinit slot and make it a string with a text copy of its own. 1 also when
// memory does not suffice; the destination then has no text. A copy onto itself changes nothing.
int vtl_string_copy(const vtl_value* source, vtl_value* destination);
int vtl_string_deepcopy(const vtl_value* source, vtl_value* destination);

// 0, and produce nothing.
int vtl_string_serialize_json(void);
int vtl_string_serialize_xml(void);

// Stores the length of the text in bytes, or all ones when there is no text.
int vtl_string_size(const vtl_value* value, unsigned* out);

// Prints "vtl_string:", the text and a newline on standard output. 1 also when there is no text.
int vtl_string_dump(const vtl_value* value);

// Releases text and record.
int vtl_string_destroy(vtl_value* value);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

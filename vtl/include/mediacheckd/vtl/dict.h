// Dicts: values that map keys to values and keep the order in which keys came.
//
// 0 is success; 1 is failure: a null argument, a value that is not a dict, or one without a chain,
// unless told otherwise. A failed call changes nothing unless told otherwise.
//
// Keys are strings and searched from the first entry on, so that set and get cost time in
// proportion to the number of entries. A key of another type can be stored, and never matches in a
// search; a search with another key type finds nothing.
#pragma once

#include <mediacheckd/vtl/value.h>

#ifdef __cplusplus
extern "C" {
#endif
// Exported: components link these by name.
#pragma GCC visibility push(default)

// The item of a dict's chain node. Key and value belong to the entry.
typedef struct vtl_dict_entry {
    vtl_value* key;
    vtl_value* value;  // null after a failed set of an existing key
} vtl_dict_entry;

// Returns a new empty dict, which the caller destroys, or null.
vtl_value* vtl_dict_create(void);

// Sets type and table, all but the dump slot, and makes a new empty chain that the dict owns. A
// dict's old chain, when it owns it, is released without its entries; clear it first.
// 1 when there is no memory for the chain; the dict then has none.
int vtl_dict_init(vtl_value* value);

// Stores the number of entries.
int vtl_dict_size(const vtl_value* dict, unsigned* out);

// Maps a key to a new value, made by vtl_value_create from type and value. An existing key keeps
// its place and gets the new value for its old one, which is destroyed; when the new one cannot be
// made (1), the entry is left without a value. A new key, made from key type and key, comes last;
// when key or value cannot be made, nothing is added and the answer is 0 all the same.
int vtl_dict_set(vtl_value* dict, unsigned key_type, const char* key, unsigned type,
                 const void* value);
int vtl_dict_set_string(vtl_value* dict, const char* key, const char* text);
int vtl_dict_set_int(vtl_value* dict, const char* key, int number);
int vtl_dict_set_bool(vtl_value* dict, const char* key, int truth);
int vtl_dict_set_double(vtl_value* dict, const char* key, double number);
int vtl_dict_set_voidptr(vtl_value* dict, const char* key, void* pointer);

// Converts the value of a key as vtl_value_get does (out and extra are told there). 1 when the key
// is not found or out is null; else 0, even when the conversion fails. The size of a text buffer
// is in bytes. Records that the last four give stay the dict's.
int vtl_dict_get(const vtl_value* dict, unsigned key_type, const char* key, unsigned target,
                 void* out, void* extra);
int vtl_dict_get_string(const vtl_value* dict, const char* key, char* buffer, unsigned size);
int vtl_dict_get_int(const vtl_value* dict, const char* key, int* out);
int vtl_dict_get_bool(const vtl_value* dict, const char* key, int* out);
int vtl_dict_get_double(const vtl_value* dict, const char* key, double* out);
int vtl_dict_get_voidptr(const vtl_value* dict, const char* key, void** out);
int vtl_dict_get_any(const vtl_value* dict, const char* key, vtl_value** out);
int vtl_dict_get_dict(const vtl_value* dict, const char* key, vtl_value** out);
int vtl_dict_get_list(const vtl_value* dict, const char* key, vtl_value** out);
int vtl_dict_get_stack(const vtl_value* dict, const char* key, vtl_value** out);

// Stores the type code of a key's value; 1 when the key is not found or has no value.
int vtl_dict_get_type(const vtl_value* dict, unsigned key_type, const char* key, unsigned* out);

// Removes an entry and destroys its key and value; 1 when the key is not found.
int vtl_dict_remove(vtl_value* dict, unsigned key_type, const char* key);

// Returns 1 when the key of some entry, of whatever type, compares EQUAL to the key record; else,
// and for a null argument, 0. key_type is not examined.
int vtl_dict_has_key(const vtl_value* dict, unsigned key_type, const vtl_value* key);

// Destroys all entries with their keys and values, even when the chain is shared. The dict stays
// usable, and empty.
int vtl_dict_clear(vtl_value* dict);

// Destroys all entries and the chain, which leaves the dict without one until its next init. For
// a dict that does not own its chain 0, and nothing changes.
int vtl_dict_deinit(vtl_value* dict);

// Runs vtl_dict_deinit and releases the record. 1 only for null.
int vtl_dict_destroy(vtl_value* dict);

// Runs the deinit slot of the destination, a dict too, and makes it share the source's chain
// without owning it: both see and change the same entries, only an owner releases them, and the
// copy must not be used after that. The copy of a dict without a chain has none either. A
// destination that shares the chain already stays as it is.
int vtl_dict_copy(const vtl_value* source, vtl_value* destination);

// Runs the destination's deinit slot and makes it a dict with deep copies of all entries that
// have both key and value. The destination must be a container with a chain. 1 also when a key or
// value has no deepcopy slot, when VTL_NESTING_MAX is passed or memory does not suffice; the
// destination is then an empty dict or one without a chain. 1, with nothing changed, when the
// destination shares the source's chain.
int vtl_dict_deepcopy(const vtl_value* source, vtl_value* destination);

// Prints for each entry "key:", the key's dump, "value:" and the value's dump on standard output,
// or "NULL pointer" and a newline when one is missing. Not in the table: call it by name.
int vtl_dict_dump(const vtl_value* dict);

// 0, and produce nothing.
int vtl_dict_serialize_json(void);
int vtl_dict_serialize_xml(void);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

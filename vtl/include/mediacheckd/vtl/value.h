// Typed values: the record that every value is, and the operations that work on any of them.
//
// A value is one record: a type code, its payload and a table of ten operations that the init
// function of its type fills. Functions answer 0 for success and 1 for failure, where a null
// argument is a failure, unless they say otherwise. A failed call changes nothing and keeps
// nothing, unless it says otherwise. Values are not protected against use from several threads.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
// Exported: components link these by name.
#pragma GCC visibility push(default)

typedef struct vtl_value vtl_value;
typedef struct vtl_chain vtl_chain;

// Type codes of values, and targets of conversions.
enum {
    VTL_TYPE_STRING = 1,
    VTL_TYPE_TEXT = 2,  // target only: the text pointer of a string
    VTL_TYPE_INT = 3,
    VTL_TYPE_BOOL = 4,
    VTL_TYPE_DOUBLE = 5,
    VTL_TYPE_FRACTION = 6,
    VTL_TYPE_VOIDPTR = 7,
    VTL_TYPE_ANY = 8,  // target and creation only: the value record itself
    VTL_TYPE_DICT = 9,
    VTL_TYPE_LIST = 10,
    VTL_TYPE_STACK = 11
};

// Bits that vtl_value_compare answers.
enum {
    VTL_COMPARE_SAME_TYPE = 1,
    VTL_COMPARE_LESS = 2,
    VTL_COMPARE_GREATER = 4,
    VTL_COMPARE_EQUAL = 8,
    VTL_COMPARE_SAME_STORAGE = 32
};

// Deep copies nest values up to this many levels inside each other and fail beyond. The limit
// keeps them within an 8 MiB stack; release has no limit.
#define VTL_NESTING_MAX 10000

// Eight bytes: two words, one double, or one pointer (which on a 64-bit processor takes both
// words, and read as an int gives its low 32 bits).
typedef union vtl_payload {
    int32_t words[2];  // int, bool: the first; fraction: numerator, denominator
    double number;     // double
    char* text;        // string: from vtl_malloc, zero-terminated and owned, or null
    void* pointer;     // voidptr: not owned
    vtl_chain* chain;  // list, stack, dict
} vtl_payload;

// What a type does with its values. A slot may be null: then the type has no such operation.
typedef struct vtl_operations {
    int (*init)(vtl_value* value);    // sets the type code and fills this table
    int (*deinit)(vtl_value* value);  // releases the payload, keeps the record
    int (*copy)(const vtl_value* source, vtl_value* destination);      // shallow
    int (*deepcopy)(const vtl_value* source, vtl_value* destination);  // shares nothing owned
    int (*clear)(vtl_value* value);                                    // empties the value
    int (*serialize_json)(void);                                       // 0, produces nothing
    int (*serialize_xml)(void);                                        // 0, produces nothing
    int (*size)(const vtl_value* value, unsigned* out);  // element count or text length
    int (*dump)(const vtl_value* value);                 // prints on standard output
    int (*destroy)(vtl_value* value);                    // releases payload and record
} vtl_operations;

struct vtl_value {
    uint32_t type;
    vtl_payload payload;
    uint32_t owns;  // dict: 1 when it owns its entry chain, 0 after a shallow copy
    vtl_operations ops;
};

// Each calls the value's own slot and returns its result; 1 for a null value or an empty slot.
// vtl_init needs a record whose init slot is set: it makes a value of the same type anew.
// vtl_copy and vtl_deepcopy first run the destination's deinit slot, then make it a value of the
// source's type. What stays shared after vtl_copy is told with each type. After a failure the
// destination is an empty value of the source's type, or as it was before the call.
// vtl_destroy ends the life of a record: the pointer is dead afterwards.
int vtl_init(vtl_value* value);
int vtl_deinit(vtl_value* value);
int vtl_copy(const vtl_value* source, vtl_value* destination);
int vtl_deepcopy(const vtl_value* source, vtl_value* destination);
int vtl_clear(vtl_value* value);
int vtl_size(const vtl_value* value, unsigned* out);
int vtl_dump(const vtl_value* value);
int vtl_destroy(vtl_value* value);

// Copies the slots copy, deepcopy, serialize_json, serialize_xml, size, dump and destroy from one
// record to another; init, deinit and clear stay.
int vtl_copy_ops(const vtl_value* source, vtl_value* destination);

// Returns a new record from vtl_malloc with no type (code 0), no payload and an empty table, or
// null. An init function makes it a value; while it is none, vtl_free releases it.
vtl_value* vtl_value_alloc(void);

// Zeroes the payload, the owns flag and all ten slots and releases nothing; the type stays.
// A record in the caller's own memory goes through here before its first init.
int vtl_value_reset(vtl_value* value);

// Makes a new value of the type from a C value:
//   STRING    a copy of the text value
//   INT BOOL  the int at value
//   DOUBLE    the double at value
//   FRACTION  numerator from the int at value, denominator from the int at extra
//   VOIDPTR   the pointer value itself, null included
//   DICT LIST STACK  empty when value is null, else a deep copy of the container value, which
//             must be of that type
//   ANY       a deep copy of the value record value
// Returns the value, which the caller destroys; null for a null argument that the type needs, for
// any other code, when what is to be copied has no deepcopy slot or nests beyond VTL_NESTING_MAX,
// and when memory does not suffice.
vtl_value* vtl_value_create(unsigned type, const void* value, const void* extra);

// Stores a C value into a record and changes neither its type nor its table. Storing a type other
// than the record's own is the caller's responsibility: the payload is not converted.
//   STRING    a copy of the text source, at most the unsigned at extra bytes of it; 1 when extra
//             is null. A string is empty when memory does not suffice (1). source may be its old
//             text.
//   TEXT VOIDPTR DICT LIST STACK  the pointer source, of which a string or container record
//             becomes the owner; what it held before is not released
//   INT BOOL  the int at source
//   DOUBLE    the double at source
//   FRACTION  numerator from the int at source, denominator from the int at extra; 1 when extra
//             is null
// Any other type stores nothing and gives 0.
int vtl_value_set(vtl_value* value, unsigned type, const void* source, const void* extra);

// Converts a value into the C variable at out. By target:
//   STRING    text into the buffer out (char), whose size is the unsigned at extra; 1 when extra
//             is null. From a string as strncpy does: filled with zeros, and without a closing
//             zero when the text does not fit. From other types always zero-terminated, cut to
//             fit: int "%d", bool "true" or "false", double and fraction "%f".
//   TEXT      char*: the text that the string owns, or null; valid until the string changes
//   INT       int: from int and bool the number; from a string its leading decimal number, 1 when
//             characters follow; from a double or a fraction d the value (int)(d + 0.5); from a
//             voidptr the low 32 bits
//   BOOL      int, 0 or 1: from a string 0 when it is empty or "false", "0", "off" or "no" in any
//             case; from a double d, (int)(d + 0.5) not 0; from int, bool and the numerator of a
//             fraction, not 0
//   DOUBLE    double: from a string its leading number without the fractional part, 1 when
//             characters follow; from int, bool, double, fraction the value
//   FRACTION  int, and the denominator into the int at extra; 1 when extra is null. From a string
//             (1 when characters follow), int or bool the INT value over 1; from a double
//             (int)(d * 1000 + 0.5) over 1000; from a fraction both as they are
//   VOIDPTR   void*: from a voidptr
//   ANY       vtl_value*: the value itself, not a copy
//   DICT LIST STACK  vtl_value*: the value itself when it is of that type
// Numbers out of the range of an int become the nearest int, not-a-number becomes 0. All other
// pairs of source and target, and every target but TEXT and ANY of a string without text, store
// nothing and give 1. A target outside the list stores nothing and gives 0.
int vtl_value_get(const vtl_value* value, unsigned target, void* out, void* extra);

// vtl_value_get for each target, with no extra: string, which needs one, gives 1, and of a fraction
// the numerator alone is stored.
int vtl_value_get_string(const vtl_value* value, char* out);
int vtl_value_get_text(const vtl_value* value, char** out);
int vtl_value_get_int(const vtl_value* value, int* out);
int vtl_value_get_bool(const vtl_value* value, int* out);
int vtl_value_get_double(const vtl_value* value, double* out);
int vtl_value_get_fraction(const vtl_value* value, int* numerator);
int vtl_value_get_voidptr(const vtl_value* value, void** out);
int vtl_value_get_any(const vtl_value* value, vtl_value** out);
int vtl_value_get_dict(const vtl_value* value, vtl_value** out);
int vtl_value_get_list(const vtl_value* value, vtl_value** out);
int vtl_value_get_stack(const vtl_value* value, vtl_value** out);

// Compares two values and returns a set of VTL_COMPARE_ bits: 0 when either is null; SAME_TYPE
// when the types are equal; and
//   container or voidptr on either side: SAME_STORAGE when the first words of both payloads are the
//     same: chain, pointer or text, or the 32 bits of a number
//   else string on either side: EQUAL when the texts are equal, else LESS (never GREATER), a null
//     text counting as empty and other types as their text; and SAME_STORAGE for two strings that
//     share one text
//   else double or fraction on either side: EQUAL within 0.000001, else LESS or GREATER
//   else LESS, GREATER or EQUAL as ints
unsigned vtl_value_compare(const vtl_value* a, const vtl_value* b);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

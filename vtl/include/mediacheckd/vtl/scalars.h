// The five scalar types: int, bool, double, fraction and voidptr. None owns memory besides its
// record. For each type T:
//
//   vtl_T_create          a new value, or null; its payload is set by vtl_T_set
//   vtl_T_create_from     a new value that holds the arguments, or null; the caller destroys it
//   vtl_T_set             stores; 1 for a null value or a value of another type
//   vtl_T_get             reads; 1 for a null argument or a value of another type, which for
//                         double and voidptr means one that vtl_value_get does not convert
//   vtl_T_init            sets type and table and keeps the payload; 1 for null
//   vtl_T_deinit, _clear  nothing; 0
//   vtl_T_copy, _deepcopy run the destination's deinit slot and make it a T with the source's
//                         payload; 1 for a null argument or a source of another type
//   vtl_T_serialize_json, _serialize_xml  nothing; 0
//   vtl_T_size            stores 1; 1 for null
//   vtl_T_dump            prints "vtl_T:", the value and a newline on standard output; 1 for null
//                         or a value of another type
//   vtl_T_destroy         releases the record; 1 for null
//
// The sections below name what differs.
#pragma once

#include <mediacheckd/vtl/value.h>

#ifdef __cplusplus
extern "C" {
#endif
// Exported: components link these by name.
#pragma GCC visibility push(default)

// Copies of an int answer 1, although they copy, when the destination has no deinit slot or its
// deinit answers 1. Dump: "%d".
vtl_value* vtl_int_create(void);
vtl_value* vtl_int_create_from(int number);
int vtl_int_set(vtl_value* value, int number);
int vtl_int_get(const vtl_value* value, int* out);
int vtl_int_init(vtl_value* value);
int vtl_int_deinit(vtl_value* value);
int vtl_int_clear(vtl_value* value);
int vtl_int_copy(const vtl_value* source, vtl_value* destination);
int vtl_int_deepcopy(const vtl_value* source, vtl_value* destination);
int vtl_int_serialize_json(void);
int vtl_int_serialize_xml(void);
int vtl_int_size(const vtl_value* value, unsigned* out);
int vtl_int_dump(const vtl_value* value);
int vtl_int_destroy(vtl_value* value);

// A bool keeps the int it was set to; anything but 0 is true, and vtl_bool_get gives 0 or 1.
// The table's dump slot stays as it was. Dump: "true" or "false".
vtl_value* vtl_bool_create(void);
vtl_value* vtl_bool_create_from(int truth);
int vtl_bool_set(vtl_value* value, int truth);
int vtl_bool_get(const vtl_value* value, int* out);
int vtl_bool_init(vtl_value* value);
int vtl_bool_deinit(vtl_value* value);
int vtl_bool_clear(vtl_value* value);
int vtl_bool_copy(const vtl_value* source, vtl_value* destination);
int vtl_bool_deepcopy(const vtl_value* source, vtl_value* destination);
int vtl_bool_serialize_json(void);
int vtl_bool_serialize_xml(void);
int vtl_bool_size(const vtl_value* value, unsigned* out);
int vtl_bool_dump(const vtl_value* value);
int vtl_bool_destroy(vtl_value* value);

// vtl_double_get converts as vtl_value_get does with the target DOUBLE. Dump: "%f".
vtl_value* vtl_double_create(void);
vtl_value* vtl_double_create_from(double number);
int vtl_double_set(vtl_value* value, double number);
int vtl_double_get(const vtl_value* value, double* out);
int vtl_double_init(vtl_value* value);
int vtl_double_deinit(vtl_value* value);
int vtl_double_clear(vtl_value* value);
int vtl_double_copy(const vtl_value* source, vtl_value* destination);
int vtl_double_deepcopy(const vtl_value* source, vtl_value* destination);
int vtl_double_serialize_json(void);
int vtl_double_serialize_xml(void);
int vtl_double_size(const vtl_value* value, unsigned* out);
int vtl_double_dump(const vtl_value* value);
int vtl_double_destroy(vtl_value* value);

// A fraction is neither reduced nor checked: a denominator of 0 divides as doubles do.
// Dump: "%d/%d".
vtl_value* vtl_fraction_create(void);
vtl_value* vtl_fraction_create_from(int numerator, int denominator);
int vtl_fraction_set(vtl_value* value, int numerator, int denominator);
int vtl_fraction_get(const vtl_value* value, int* numerator, int* denominator);
int vtl_fraction_init(vtl_value* value);
int vtl_fraction_deinit(vtl_value* value);
int vtl_fraction_clear(vtl_value* value);
int vtl_fraction_copy(const vtl_value* source, vtl_value* destination);
int vtl_fraction_deepcopy(const vtl_value* source, vtl_value* destination);
int vtl_fraction_serialize_json(void);
int vtl_fraction_serialize_xml(void);
int vtl_fraction_size(const vtl_value* value, unsigned* out);
int vtl_fraction_dump(const vtl_value* value);
int vtl_fraction_destroy(vtl_value* value);

// The pointer is opaque: never followed, never released, and the same in every copy, deep ones
// included. It may be null in vtl_voidptr_create_from; vtl_voidptr_set answers 1 for null.
// Dump: "%p".
vtl_value* vtl_voidptr_create(void);
vtl_value* vtl_voidptr_create_from(void* pointer);
int vtl_voidptr_set(vtl_value* value, void* pointer);
int vtl_voidptr_get(const vtl_value* value, void** out);
int vtl_voidptr_init(vtl_value* value);
int vtl_voidptr_deinit(vtl_value* value);
int vtl_voidptr_clear(vtl_value* value);
int vtl_voidptr_copy(const vtl_value* source, vtl_value* destination);
int vtl_voidptr_deepcopy(const vtl_value* source, vtl_value* destination);
int vtl_voidptr_serialize_json(void);
int vtl_voidptr_serialize_xml(void);
int vtl_voidptr_size(const vtl_value* value, unsigned* out);
int vtl_voidptr_dump(const vtl_value* value);
int vtl_voidptr_destroy(vtl_value* value);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

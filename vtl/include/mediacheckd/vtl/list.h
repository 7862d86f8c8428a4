// Lists: values that own a sequence of values.
//
// 0 is success; 1 is failure: a null argument, a value that is not a list, or one without a chain,
// unless told otherwise. A failed call changes nothing unless told otherwise. Indexes count from
// the head; an index below 0 means 0. Appending is immediate, an index costs a walk from the head.
#pragma once

#include <mediacheckd/vtl/value.h>

#ifdef __cplusplus
extern "C" {
#endif
// Exported: components link these by name.
#pragma GCC visibility push(default)

// Returns a new empty list, which the caller destroys, or null.
vtl_value* vtl_list_create(void);

// Sets type and table and makes a new empty chain. What the record held before is not released.
// 1 when there is no memory for the chain; the list then has none.
int vtl_list_init(vtl_value* value);

// Stores the number of elements.
int vtl_list_size(const vtl_value* list, unsigned* out);

// Inserts a new element, made by vtl_value_create from type and value and owned by the list,
// before the one at the index; at the end when the index lies there or beyond. 1 also when the
// element cannot be made.
int vtl_list_insert(vtl_value* list, int index, unsigned type, const void* value);
int vtl_list_insert_int(vtl_value* list, int index, int number);
int vtl_list_insert_bool(vtl_value* list, int index, int truth);
int vtl_list_insert_double(vtl_value* list, int index, double number);

// The same after the last element.
int vtl_list_append(vtl_value* list, unsigned type, const void* value);
int vtl_list_append_int(vtl_value* list, int number);
int vtl_list_append_bool(vtl_value* list, int truth);
int vtl_list_append_double(vtl_value* list, double number);
int vtl_list_append_voidptr(vtl_value* list, void* pointer);

// Converts the element at the index as vtl_value_get does (out and extra are told there). 1 when
// there is no such element or out is null; else 0, even when the conversion fails: an out that
// the caller set beforehand tells. The size of a text buffer is in bytes. An element that
// vtl_list_get_any gives stays the list's.
int vtl_list_get(const vtl_value* list, int index, unsigned target, void* out, void* extra);
int vtl_list_get_string(const vtl_value* list, int index, char* buffer, unsigned size);
int vtl_list_get_int(const vtl_value* list, int index, int* out);
int vtl_list_get_bool(const vtl_value* list, int index, int* out);
int vtl_list_get_double(const vtl_value* list, int index, double* out);
int vtl_list_get_voidptr(const vtl_value* list, int index, void** out);
int vtl_list_get_any(const vtl_value* list, int index, vtl_value** out);

// Stores the element at the index, which stays the list's; 1 when there is none.
int vtl_list_get_element(const vtl_value* list, int index, vtl_value** out);

// Removes and destroys the element at the index; 1 when there is none.
int vtl_list_remove(vtl_value* list, int index);

// Destroys all elements through their destroy slots. The list stays usable, and empty.
int vtl_list_clear(vtl_value* list);

// Destroys all elements and the chain: the list has none then, until its next init.
int vtl_list_deinit(vtl_value* list);

// Destroys all elements, the chain and the record. 1 only for null.
int vtl_list_destroy(vtl_value* list);

// Runs the destination's deinit slot and makes it a list that shares the source's chain: both see
// and change the same elements, and whichever is destroyed or deinitialised first releases them
// for both. Take the other out of use then (vtl_value_reset, vtl_free). A destination that shares
// the chain already stays as it is.
int vtl_list_copy(const vtl_value* source, vtl_value* destination);

// Runs the destination's deinit slot and makes it a list with deep copies of all elements. 1 also
// when an element has no deepcopy slot, when VTL_NESTING_MAX is passed or memory does not suffice;
// the destination is then an empty list or one without a chain. 1, with nothing changed, when the
// destination shares the source's chain.
int vtl_list_deepcopy(const vtl_value* source, vtl_value* destination);

// Prints nothing.
int vtl_list_dump(const vtl_value* list);

// 0, and produce nothing.
int vtl_list_serialize_json(void);
int vtl_list_serialize_xml(void);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

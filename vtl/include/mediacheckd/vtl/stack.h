// Stacks: values that own a sequence of values, whose head is the top.
//
// 0 is success; 1 is failure: a null argument, a value that is not a stack, or one without a
// chain, unless told otherwise. A failed call changes nothing unless told otherwise. Indexes count
// from the top; an index below 0 means 0.
//
// Only vtl_stack_clear destroys elements. vtl_stack_pop and vtl_stack_remove hand an element out,
// vtl_stack_deinit and vtl_stack_destroy let go of all of them: whoever does not hold them
// elsewhere clears the stack first.
#pragma once

#include <mediacheckd/vtl/value.h>

#ifdef __cplusplus
extern "C" {
#endif
// Exported: components link these by name.
#pragma GCC visibility push(default)

// Returns a new empty stack, which the caller destroys; null also when its chain cannot be made.
vtl_value* vtl_stack_create(void);

// Sets type and table, all but the dump slot, and makes a new empty chain. What the record held
// before is not released. 1 only for null: without memory the stack has no chain.
int vtl_stack_init(vtl_value* value);

// Stores the number of elements.
int vtl_stack_size(const vtl_value* stack, unsigned* out);

// Puts a new element, made by vtl_value_create from type and value and owned by the stack, on
// top. 1 also when the element cannot be made.
int vtl_stack_push(vtl_value* stack, unsigned type, const void* value);
int vtl_stack_push_int(vtl_value* stack, int number);
int vtl_stack_push_bool(vtl_value* stack, int truth);
int vtl_stack_push_double(vtl_value* stack, double number);

// The same before the element at the index; at the bottom when the index lies there or beyond.
int vtl_stack_insert(vtl_value* stack, int index, unsigned type, const void* value);
int vtl_stack_insert_int(vtl_value* stack, int index, int number);
int vtl_stack_insert_bool(vtl_value* stack, int index, int truth);
int vtl_stack_insert_double(vtl_value* stack, int index, double number);

// The same at the bottom.
int vtl_stack_append(vtl_value* stack, unsigned type, const void* value);
int vtl_stack_append_int(vtl_value* stack, int number);
int vtl_stack_append_bool(vtl_value* stack, int truth);
int vtl_stack_append_double(vtl_value* stack, double number);

// Converts the element at the index as vtl_value_get does (out and extra are told there). 1 when
// there is no such element or out is null; else 0, even when the conversion fails. The size of a
// text buffer is in bytes. An element that vtl_stack_get_any gives stays the stack's.
int vtl_stack_get(const vtl_value* stack, int index, unsigned target, void* out, void* extra);
int vtl_stack_get_string(const vtl_value* stack, int index, char* buffer, unsigned size);
int vtl_stack_get_int(const vtl_value* stack, int index, int* out);
int vtl_stack_get_bool(const vtl_value* stack, int index, int* out);
int vtl_stack_get_double(const vtl_value* stack, int index, double* out);
int vtl_stack_get_voidptr(const vtl_value* stack, int index, void** out);
int vtl_stack_get_any(const vtl_value* stack, int index, vtl_value** out);

// Converts the top element as vtl_stack_get does, whatever comes of it, and takes it off without
// destroying it. With the target ANY the element in out is the caller's to destroy; with any
// other it must be held elsewhere, or it is lost. 1 when the stack is empty or out is null.
int vtl_stack_pop(vtl_value* stack, unsigned target, void* out, void* extra);

// Takes the element at the index out without destroying it: peek first, and it is the caller's.
// 1 when there is none.
int vtl_stack_remove(vtl_value* stack, int index);

// Stores the element at the index, which stays the stack's; 1 when there is none.
int vtl_stack_peek(const vtl_value* stack, int index, vtl_value** out);

// Stores the text length in bytes of the string at the index (all ones without a text). For an
// element of another type 0, and nothing is stored; 1 when there is no element.
int vtl_stack_text_length(const vtl_value* stack, int index, unsigned* out);

// Destroys all elements through their destroy slots. The stack stays usable, and empty.
int vtl_stack_clear(vtl_value* stack);

// Releases the chain and no element: the stack has none then, until its next init.
int vtl_stack_deinit(vtl_value* stack);

// Releases the chain and the record, and no element. 1 only for null.
int vtl_stack_destroy(vtl_value* stack);

// Runs the destination's deinit slot and makes it a stack that shares the source's chain; see
// vtl_list_copy.
int vtl_stack_copy(const vtl_value* source, vtl_value* destination);

// Runs the destination's deinit slot and makes it a stack with deep copies of all elements; see
// vtl_list_deepcopy.
int vtl_stack_deepcopy(const vtl_value* source, vtl_value* destination);

// Prints one line for each element, the top one first, on standard output: its index, ": ", and
// the first 74 bytes of its text (empty when it has none). Not in the table: call it by name.
int vtl_stack_dump(const vtl_value* stack);

// 0, and produce nothing.
int vtl_stack_serialize_json(void);
int vtl_stack_serialize_xml(void);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

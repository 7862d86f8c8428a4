// Memory of the typed values: one interface through which all of it is taken, and an accounting
// variant of allocation.
//
// Nothing here is protected: the interface, the counters and the list belong to the process.
#pragma once

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
// Exported: components link these by name.
#pragma GCC visibility push(default)

// The four allocation functions of a component, each with the contract of its C library namesake
// (malloc, free, calloc, realloc). A block goes back to the interface it came from: change the
// interface while no value lives.
typedef struct vtl_mem_interface {
    void* (*allocate)(size_t size);
    void (*release)(void* pointer);
    void* (*allocate_zeroed)(size_t count, size_t size);
    void* (*reallocate)(void* pointer, size_t size);
} vtl_mem_interface;

// The interface in force; at start that of the C library. Null: every allocation fails.
extern const vtl_mem_interface* vtl_mem_ifc_active;

// Makes the interface active. It is used in place and must outlive its use.
// Returns 0; 1 for null, which changes nothing.
int vtl_mem_set_interface(const vtl_mem_interface* interface);

// Allocates size bytes through the active interface.
// Returns the block, to be released by vtl_free, or null.
void* vtl_malloc(size_t size);

// Releases a block through the active interface; without one the block stays allocated.
void vtl_free(void* pointer);

// As vtl_malloc, for count zeroed objects of size bytes each.
void* vtl_calloc(size_t count, size_t size);

// Reallocates a block of the active interface to size bytes.
// Returns the new block; or null, and then the old block is still the caller's.
void* vtl_realloc(void* pointer, size_t size);

// One live block of vtl_malloc_debug.
typedef struct vtl_mem_debug_record {
    struct vtl_mem_debug_record* next;
    struct vtl_mem_debug_record* previous;
    void* block;
    size_t size;       // bytes asked for
    const char* file;  // the caller's, not copied
    int line;
} vtl_mem_debug_record;

// Bytes now allocated by vtl_malloc_debug, and the most there ever were. Only vtl_malloc_debug,
// vtl_free_debug and the two resets change them.
// NOLINTBEGIN(bugprone-reserved-identifier): other components know these names
extern uint32_t _vtl_mem_usage_current;
extern uint32_t _vtl_mem_usage_highwater;
// NOLINTEND(bugprone-reserved-identifier)

// The oldest live record, or null.
extern vtl_mem_debug_record* vtl_mem_debug_list;

// Return the two counters, in bytes.
uint32_t vtl_mem_usage_current(void);
uint32_t vtl_mem_usage_highwater(void);

// Set one counter to 0; the live records stay.
void vtl_mem_usage_reset_current(void);
void vtl_mem_usage_reset_highwater(void);

// Allocates size bytes by vtl_malloc and records them at the end of the list.
// file: kept by pointer for as long as the block lives.
// Returns the block, to be released by vtl_free_debug, or null. A block whose record cannot be
// allocated is counted all the same, but not listed.
void* vtl_malloc_debug(size_t size, const char* file, int line);

// Takes the block off the count and the list and releases it by vtl_free.
// A block that is not listed is released uncounted, with an error line on standard output. While
// the list is empty no block is released; standard output has an error line.
void vtl_free_debug(void* pointer);

// Prints the counters and one line for each live record, oldest first, on standard output.
void vtl_mem_debug_dump(void);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

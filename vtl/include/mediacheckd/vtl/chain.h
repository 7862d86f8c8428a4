// Chains: doubly linked nodes that carry items, below list, stack and dict.
//
// A chain owns its nodes, never their items. 0 is success; 1 is failure: a null header or node, or
// memory that does not suffice. A failed call changes nothing. A position must be a node of the
// chain it is given with.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
// Exported: components link these by name.
#pragma GCC visibility push(default)

typedef struct vtl_chain_node {
    void* item;  // list and stack: a vtl_value; dict: a vtl_dict_entry
    int32_t priority;
    struct vtl_chain_node* previous;
    struct vtl_chain_node* next;
} vtl_chain_node;

typedef struct vtl_chain {
    vtl_chain_node* head;  // head and tail are null when the chain is empty
    vtl_chain_node* tail;
} vtl_chain;

// Returns a new empty chain from vtl_malloc, or null.
vtl_chain* vtl_chain_create(void);

// Releases all nodes.
int vtl_chain_reset(vtl_chain* chain);

// Releases all nodes and the header.
int vtl_chain_destroy(vtl_chain* chain);

// Stores the number of nodes, which takes a walk over all of them.
int vtl_chain_count(const vtl_chain* chain, unsigned* out);

// Return the first and the last node, which stay the chain's; null when there is none.
vtl_chain_node* vtl_chain_head(const vtl_chain* chain);
vtl_chain_node* vtl_chain_tail(const vtl_chain* chain);

// Links a node, which must come from vtl_malloc and becomes the chain's, before the position; at
// the end when position is null or the chain is empty.
int vtl_chain_insert_before(vtl_chain* chain, vtl_chain_node* position, vtl_chain_node* node);

// As vtl_chain_insert_before, with a new node of priority 0 for the item.
int vtl_chain_insert_item_before(vtl_chain* chain, vtl_chain_node* position, void* item);

// Links a new node of priority 0 for the item after the position. In an empty chain position does
// not matter; otherwise 1 when it is null.
int vtl_chain_insert_item_after(vtl_chain* chain, vtl_chain_node* position, void* item);

// Links a new node for the item before the first node of lower priority, so that a chain filled
// this way alone descends by priority and keeps equal ones in the order they came.
int vtl_chain_insert_by_priority(vtl_chain* chain, int priority, void* item);

// Unlinks the node and releases it.
int vtl_chain_unlink(vtl_chain* chain, vtl_chain_node* node);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

// What list, stack and dict share: a record that refers to a chain.
#pragma once

#include "vtl/containers/teardown.h"
#include "vtl/values/record.h"
#include <mediacheckd/vtl/chain.h>
#include <mediacheckd/vtl/value.h>

namespace vtl {

// The chain of a container of the type; null for any other value and for none.
vtl_chain* chainOf(const vtl_value* value, unsigned type);

// Whether the value is a dict, a list or a stack.
bool isContainer(const vtl_value& value);

// Whether the value is a container that has a chain. False for null.
bool hasChain(const vtl_value* value);

// Whether the value is a container that refers to this chain. False for null.
bool refersTo(const vtl_value* value, const vtl_chain* chain);

// Sets type and table and makes a new chain.
// Returns 1 for a null value or when there is no memory for the chain, which is null then.
int initContainer(vtl_value* value, unsigned type, const vtl_operations& operations);

// Releases the chain with its nodes, but no item. Returns 1 when there is none.
int releaseChain(vtl_value* value, unsigned type);

// Makes the destination a container of the type, as the source is, that refers to the source's
// chain without owning it. Changes nothing when it does so already. Returns 1 for a source
// without a chain or a null destination.
int shareChain(const vtl_value* source, vtl_value* destination, unsigned type,
               const vtl_operations& operations);

// Makes the destination a container of the type, as the source is, with a deep copy of each item,
// which appendCopy adds to the chain it is given. When one fails, what was copied is destroyed by
// destroyItems. Returns 1 then, for a source or a new container without a chain, and for a
// destination that is null or refers to the source's chain.
int copyItems(const vtl_value* source, vtl_value* destination, unsigned type, Init init,
              int (*appendCopy)(vtl_chain& copies, const void* item),
              void (*destroyItems)(vtl_chain& copies, StackElements elements));

}  // namespace vtl

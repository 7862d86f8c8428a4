// What list, stack and dict share: a record that refers to a chain.
#pragma once

#include "vtl/containers/teardown.h"
#include "vtl/values/record.h"
#include <mediacheckd/vtl/chain.h>
#include <mediacheckd/vtl/value.h>

namespace vtl {

// What one kind of container differs in.
struct ContainerType {
    unsigned code;
    vtl_operations operations;
    // Adds a deep copy of the item to the chain. Returns 1 when it cannot be made.
    int (*appendCopy)(vtl_chain& copies, const void* item);
    void (*destroyItems)(vtl_chain& items, StackElements elements);
};
extern const ContainerType kListType;
extern const ContainerType kStackType;
extern const ContainerType kDictType;

// Returns the kind of container that a type code stands for; null for any other.
const ContainerType* containerType(unsigned type);

// The chain of a container of the type; null for any other value and for none.
vtl_chain* chainOf(const vtl_value* value, unsigned type);

// Whether the value is a container that has a chain. False for null.
bool hasChain(const vtl_value* value);

// Whether the value is a container that refers to this chain. False for null.
bool refersTo(const vtl_value* value, const vtl_chain* chain);

// Sets type and table and makes a new chain.
// Returns 1 for a null value or when there is no memory for the chain, which is null then.
int initContainer(vtl_value* value, const ContainerType& type);

// Releases the chain with its nodes, but no item. Returns 1 when there is none.
int releaseChain(vtl_value* value, unsigned type);

// Makes the destination a container of the type, as the source is, that refers to the source's
// chain, or to none as it does, without owning it. Changes nothing when it does so already.
// Returns 1 for a source of another type or a null destination.
int shareChain(const vtl_value* source, vtl_value* destination, const ContainerType& type);

// Adds a deep copy of each item of the source to a container of the type that is empty. When one
// fails, what was copied is destroyed. Returns 1 then, and when either has no chain.
int fillContainer(const vtl_value& source, vtl_value& fresh, const ContainerType& type);

// Makes the destination a container of the type, as the source is, and fills it. Returns 1 when
// that fails, and for a destination that is null or refers to the source's chain.
int copyContainer(const vtl_value* source, vtl_value* destination, const ContainerType& type);

}  // namespace vtl

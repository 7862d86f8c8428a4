#pragma once
// What list, stack and dict share: a record that refers to a chain.

#include "vtl/chain.h"
#include "vtl/value.h"

namespace vtl {

/// The chain of a container of the type; null for any other value and for none.
vtl_chain* chainOf(const vtl_value* value, unsigned type);

/// Whether the value is a container of whatever type that has a chain.
bool hasChain(const vtl_value* value);

/// Whether the value is a container of whatever type that refers to this chain.
bool refersTo(const vtl_value* value, const vtl_chain* chain);

/// Sets type and table and makes a new chain.
/// Returns 1 for a null value or when there is no memory for the chain, which is null then.
int initContainer(vtl_value* value, unsigned type, const vtl_operations& operations);

/// Releases the chain with its nodes, but no item. Returns 1 when there is none.
int releaseChain(vtl_value* value, unsigned type);

/// Makes the destination a container of the type, as the source is, that refers to the source's
/// chain without owning it. Changes nothing when it does so already. Returns 1 for a source
/// without a chain or a null destination.
int shareChain(const vtl_value* source, vtl_value* destination, unsigned type,
               const vtl_operations& operations);

}  // namespace vtl

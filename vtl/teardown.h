#pragma once
// Destroys what containers hold, however deeply they nest, on a bounded stack: a list or dict met
// on the way hands its nodes over before its own destroy slot runs.

#include "vtl/chain.h"
#include "vtl/dict.h"

namespace vtl {

/// Destroys every value of the chain, through its destroy slot, and releases the nodes.
void destroyValues(vtl_chain& values);

/// Destroys every entry of the chain with its key and value and releases the nodes.
void destroyEntries(vtl_chain& entries);

/// Destroys key and value, either of which may be null, and releases the entry.
void destroyEntry(vtl_dict_entry* entry);

}  // namespace vtl

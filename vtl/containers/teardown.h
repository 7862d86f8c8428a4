// Destroys what containers hold, however deeply they nest, on a bounded stack: a list or dict met
// on the way hands its nodes over before its own destroy slot runs.
#pragma once

#include <mediacheckd/vtl/chain.h>
#include <mediacheckd/vtl/dict.h>

namespace vtl {

// What becomes of the elements of a stack met on the way. Its own destroy lets go of them, as they
// may be held elsewhere; in a copy that was never handed out nobody else can hold them.
enum class StackElements { kLetGo, kDestroy };

// Destroys every value of the chain, through its destroy slot, and releases the nodes.
void destroyValues(vtl_chain& values, StackElements elements = StackElements::kLetGo);

// Destroys every entry of the chain with its key and value and releases the nodes.
void destroyEntries(vtl_chain& entries, StackElements elements = StackElements::kLetGo);

// Destroys key and value, either of which may be null, and releases the entry.
void destroyEntry(vtl_dict_entry* entry, StackElements elements = StackElements::kLetGo);

// Destroys a value that was never handed out.
void destroyUnseen(vtl_value* value);

}  // namespace vtl

// What lists and stacks share: a chain of values reached by index. A null chain, which is what a
// value that is no such container has, gives 1.
#pragma once

#include "vtl/values/record.h"
#include <mediacheckd/vtl/chain.h>

namespace vtl {

// Makes an element and inserts it before the node at the index, at the end when there is none.
int insertElement(vtl_chain* chain, int index, unsigned type, const void* value);

// Makes an element and adds it after the tail.
int appendElement(vtl_chain* chain, unsigned type, const void* value);

// Converts the element at the index into out, whatever comes of the conversion.
int convertElement(const vtl_chain* chain, int index, unsigned target, void* out, void* extra);

// Takes the node at the index off the chain and stores its element. Returns 1 when there is none.
[[nodiscard]] int takeElement(vtl_chain* chain, int index, vtl_value** element);

// Destroys all elements; the chain stays, empty.
int clearElements(vtl_chain* chain);

// Adds a deep copy of a value to the chain. Returns 1 when it cannot be made.
int appendClone(vtl_chain& chain, const void* value);

}  // namespace vtl

// Deep copies of values of any type, elements of containers above all.
#pragma once

#include <memory>

#include <mediacheckd/vtl/value.h>

namespace vtl {

// Ends a value that was never handed out.
struct DestroyValue {
    void operator()(vtl_value* value) const;
};
using ValuePtr = std::unique_ptr<vtl_value, DestroyValue>;

// A new value of the same type, filled as its deepcopy slot does; null when it has none, when
// VTL_NESTING_MAX deep copies are under way or memory does not suffice.
[[nodiscard]] ValuePtr clone(const vtl_value& source);

}  // namespace vtl

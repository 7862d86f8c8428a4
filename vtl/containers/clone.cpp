#include "vtl/containers/clone.h"

#include "vtl/containers/container.h"
#include "vtl/containers/teardown.h"
#include <mediacheckd/vtl/memory.h>

namespace vtl {
namespace {

// Deep copies nest by way of the table's slots, on the machine's stack.
thread_local int sNesting = 0;

class NestingLevel {
  public:
    NestingLevel() { ++sNesting; }
    ~NestingLevel() { --sNesting; }
    NestingLevel(const NestingLevel&) = delete;
    NestingLevel& operator=(const NestingLevel&) = delete;

    static bool permitted() { return sNesting <= VTL_NESTING_MAX; }
};

// The deepcopy slot of a container would make the chain of the fresh value anew.
int copyOnto(vtl_value& fresh, const vtl_value& source) {
    const ContainerType* type = containerType(source.type);
    const bool own = type != nullptr && source.ops.init == type->operations.init &&
                     source.ops.deepcopy == type->operations.deepcopy;
    return own ? fillContainer(source, fresh, *type) : source.ops.deepcopy(&source, &fresh);
}

}  // namespace

void DestroyValue::operator()(vtl_value* value) const {
    if (value->ops.destroy != nullptr) {
        destroyUnseen(value);
    } else {
        vtl_free(value);
    }
}

ValuePtr clone(const vtl_value& source) {
    const NestingLevel level;
    ValuePtr copy;
    if (source.ops.deepcopy == nullptr || !NestingLevel::permitted()) {
        return copy;
    }
    copy.reset(vtl_value_alloc());
    if (copy == nullptr) {
        return copy;
    }
    copy->type = source.type;
    // Initialised first: an int's copy answers 1 without a deinit slot to run.
    const bool ready = source.ops.init == nullptr || source.ops.init(copy.get()) == 0;
    if (!ready || copyOnto(*copy, source) != 0) {
        copy.reset();
    }
    return copy;
}

}  // namespace vtl

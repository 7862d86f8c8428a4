#include <mediacheckd/vtl/value.h>

#include "vtl/values/record.h"
#include <mediacheckd/vtl/memory.h>

static_assert(sizeof(vtl_payload) == 8, "a payload is two words, one double or one pointer");

namespace {

template <typename Slot, typename Value, typename... Arguments>
int callSlot(Slot vtl_operations::*slot, Value* value, Arguments... arguments) {
    if (value == nullptr || value->ops.*slot == nullptr) {
        return 1;
    }
    return (value->ops.*slot)(value, arguments...);
}

int intAt(const void* pointer) {
    return *static_cast<const int*>(pointer);
}

double doubleAt(const void* pointer) {
    return *static_cast<const double*>(pointer);
}

}  // namespace

int vtl_init(vtl_value* value) {
    return callSlot(&vtl_operations::init, value);
}

int vtl_deinit(vtl_value* value) {
    return callSlot(&vtl_operations::deinit, value);
}

int vtl_copy(const vtl_value* source, vtl_value* destination) {
    return callSlot(&vtl_operations::copy, source, destination);
}

int vtl_deepcopy(const vtl_value* source, vtl_value* destination) {
    return destination != nullptr ? callSlot(&vtl_operations::deepcopy, source, destination) : 1;
}

int vtl_clear(vtl_value* value) {
    return callSlot(&vtl_operations::clear, value);
}

int vtl_size(const vtl_value* value, unsigned* out) {
    return callSlot(&vtl_operations::size, value, out);
}

int vtl_dump(const vtl_value* value) {
    return callSlot(&vtl_operations::dump, value);
}

int vtl_destroy(vtl_value* value) {
    return callSlot(&vtl_operations::destroy, value);
}

int vtl_copy_ops(const vtl_value* source, vtl_value* destination) {
    if (source == nullptr || destination == nullptr) {
        return 1;
    }
    vtl_operations operations = source->ops;
    operations.init = destination->ops.init;
    operations.deinit = destination->ops.deinit;
    operations.clear = destination->ops.clear;
    destination->ops = operations;
    return 0;
}

vtl_value* vtl_value_alloc() {
    auto* value = static_cast<vtl_value*>(vtl_malloc(sizeof(vtl_value)));
    if (value != nullptr) {
        value->type = 0;
        vtl_value_reset(value);
    }
    return value;
}

int vtl_value_reset(vtl_value* value) {
    if (value == nullptr) {
        return 1;
    }
    const uint32_t type = value->type;
    *value = vtl_value{};
    value->type = type;
    return 0;
}

int vtl_value_set(vtl_value* value, unsigned type, const void* source, const void* extra) {
    if (value == nullptr || source == nullptr || (vtl::needsExtra(type) && extra == nullptr)) {
        return 1;
    }
    switch (type) {
        case VTL_TYPE_STRING:
            return vtl::storeText(*value, static_cast<const char*>(source),
                                  *static_cast<const unsigned*>(extra));
        case VTL_TYPE_TEXT:
        case VTL_TYPE_VOIDPTR:
        case VTL_TYPE_DICT:
        case VTL_TYPE_LIST:
        case VTL_TYPE_STACK:
            value->payload.pointer = const_cast<void*>(source);
            break;
        case VTL_TYPE_INT:
        case VTL_TYPE_BOOL:
            value->payload.words[0] = intAt(source);
            break;
        case VTL_TYPE_DOUBLE:
            value->payload.number = doubleAt(source);
            break;
        case VTL_TYPE_FRACTION:
            value->payload.words[0] = intAt(source);
            value->payload.words[1] = intAt(extra);
            break;
        default:
            break;
    }
    return 0;
}

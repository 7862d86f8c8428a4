// The table of types: what each type code stands for. It knows every type; containers make and copy
// their elements by it.
#include "vtl/containers/clone.h"
#include "vtl/containers/container.h"
#include <mediacheckd/vtl/dict.h>
#include <mediacheckd/vtl/list.h>
#include <mediacheckd/vtl/scalars.h>
#include <mediacheckd/vtl/stack.h>
#include <mediacheckd/vtl/string.h>

namespace {

int intAt(const void* pointer) {
    return *static_cast<const int*>(pointer);
}

vtl_value* createText(const char* text) {
    vtl_value* value = vtl_string_create_from(text);
    if (value != nullptr && value->payload.text == nullptr) {
        vtl_string_destroy(value);
        return nullptr;
    }
    return value;
}

vtl_value* cloneOfType(unsigned type, const void* container) {
    const auto* source = static_cast<const vtl_value*>(container);
    return source->type == type ? vtl::clone(*source).release() : nullptr;
}

}  // namespace

const vtl::ContainerType* vtl::containerType(unsigned type) {
    switch (type) {
        case VTL_TYPE_DICT:
            return &kDictType;
        case VTL_TYPE_LIST:
            return &kListType;
        case VTL_TYPE_STACK:
            return &kStackType;
        default:
            return nullptr;
    }
}

vtl_value* vtl_value_create(unsigned type, const void* value, const void* extra) {
    switch (type) {
        case VTL_TYPE_VOIDPTR:
            return vtl_voidptr_create_from(const_cast<void*>(value));
        case VTL_TYPE_DICT:
            return value != nullptr ? cloneOfType(type, value) : vtl_dict_create();
        case VTL_TYPE_LIST:
            return value != nullptr ? cloneOfType(type, value) : vtl_list_create();
        case VTL_TYPE_STACK:
            return value != nullptr ? cloneOfType(type, value) : vtl_stack_create();
        default:
            break;
    }
    if (value == nullptr) {
        return nullptr;
    }
    switch (type) {
        case VTL_TYPE_STRING:
            return createText(static_cast<const char*>(value));
        case VTL_TYPE_INT:
            return vtl_int_create_from(intAt(value));
        case VTL_TYPE_BOOL:
            return vtl_bool_create_from(intAt(value));
        case VTL_TYPE_DOUBLE:
            return vtl_double_create_from(*static_cast<const double*>(value));
        case VTL_TYPE_FRACTION:
            return extra != nullptr ? vtl_fraction_create_from(intAt(value), intAt(extra))
                                    : nullptr;
        case VTL_TYPE_ANY:
            return vtl::clone(*static_cast<const vtl_value*>(value)).release();
        default:
            return nullptr;
    }
}

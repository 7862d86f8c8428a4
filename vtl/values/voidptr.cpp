// Pointers that the values do not own.
#include <cstdio>

#include "vtl/values/record.h"
#include <mediacheckd/vtl/scalars.h>

namespace {

constexpr vtl_operations kOperations = {
    vtl_voidptr_init,  vtl_voidptr_deinit,         vtl_voidptr_copy,          vtl_voidptr_deepcopy,
    vtl_voidptr_clear, vtl_voidptr_serialize_json, vtl_voidptr_serialize_xml, vtl_voidptr_size,
    vtl_voidptr_dump,  vtl_voidptr_destroy,
};

}  // namespace

vtl_value* vtl_voidptr_create() {
    return vtl::create(vtl_voidptr_init);
}

vtl_value* vtl_voidptr_create_from(void* pointer) {
    return vtl::createWith(vtl_voidptr_init, vtl_voidptr_set, pointer);
}

int vtl_voidptr_set(vtl_value* value, void* pointer) {
    if (!vtl::isOf(value, VTL_TYPE_VOIDPTR)) {
        return 1;
    }
    return vtl_value_set(value, VTL_TYPE_VOIDPTR, pointer, nullptr);
}

int vtl_voidptr_get(const vtl_value* value, void** out) {
    return vtl_value_get(value, VTL_TYPE_VOIDPTR, out, nullptr);
}

int vtl_voidptr_init(vtl_value* value) {
    return vtl::become(value, VTL_TYPE_VOIDPTR, kOperations);
}

int vtl_voidptr_deinit(vtl_value*) {
    return 0;
}

int vtl_voidptr_clear(vtl_value*) {
    return 0;
}

int vtl_voidptr_copy(const vtl_value* source, vtl_value* destination) {
    return vtl::copyScalar(source, destination, VTL_TYPE_VOIDPTR, vtl_voidptr_init) ? 0 : 1;
}

int vtl_voidptr_deepcopy(const vtl_value* source, vtl_value* destination) {
    return vtl_voidptr_copy(source, destination);
}

int vtl_voidptr_serialize_json() {
    return 0;
}

int vtl_voidptr_serialize_xml() {
    return 0;
}

int vtl_voidptr_size(const vtl_value* value, unsigned* out) {
    return vtl::sizeOfOne(value, out);
}

int vtl_voidptr_dump(const vtl_value* value) {
    if (!vtl::isOf(value, VTL_TYPE_VOIDPTR)) {
        return 1;
    }
    std::printf("vtl_voidptr:%p\n", value->payload.pointer);
    return 0;
}

int vtl_voidptr_destroy(vtl_value* value) {
    return vtl::release(value);
}

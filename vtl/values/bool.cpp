// Booleans.
#include <cstdio>

#include "vtl/values/record.h"
#include <mediacheckd/vtl/scalars.h>

namespace {

constexpr vtl_operations kOperations = {
    vtl_bool_init,  vtl_bool_deinit,         vtl_bool_copy,          vtl_bool_deepcopy,
    vtl_bool_clear, vtl_bool_serialize_json, vtl_bool_serialize_xml, vtl_bool_size,
    nullptr,        vtl_bool_destroy,
};

}  // namespace

vtl_value* vtl_bool_create() {
    return vtl::create(vtl_bool_init);
}

vtl_value* vtl_bool_create_from(int truth) {
    return vtl::createWith(vtl_bool_init, vtl_bool_set, truth);
}

int vtl_bool_set(vtl_value* value, int truth) {
    if (!vtl::isOf(value, VTL_TYPE_BOOL)) {
        return 1;
    }
    value->payload.words[0] = truth;
    return 0;
}

int vtl_bool_get(const vtl_value* value, int* out) {
    if (!vtl::isOf(value, VTL_TYPE_BOOL) || out == nullptr) {
        return 1;
    }
    return vtl::store<int>(out, value->payload.words[0] != 0);
}

int vtl_bool_init(vtl_value* value) {
    return vtl::become(value, VTL_TYPE_BOOL, kOperations);
}

int vtl_bool_deinit(vtl_value*) {
    return 0;
}

int vtl_bool_clear(vtl_value*) {
    return 0;
}

int vtl_bool_copy(const vtl_value* source, vtl_value* destination) {
    return vtl::copyScalar(source, destination, VTL_TYPE_BOOL, vtl_bool_init) ? 0 : 1;
}

int vtl_bool_deepcopy(const vtl_value* source, vtl_value* destination) {
    return vtl_bool_copy(source, destination);
}

int vtl_bool_serialize_json() {
    return 0;
}

int vtl_bool_serialize_xml() {
    return 0;
}

int vtl_bool_size(const vtl_value* value, unsigned* out) {
    return vtl::sizeOfOne(value, out);
}

int vtl_bool_dump(const vtl_value* value) {
    if (!vtl::isOf(value, VTL_TYPE_BOOL)) {
        return 1;
    }
    std::printf("vtl_bool:%s\n", value->payload.words[0] != 0 ? "true" : "false");
    return 0;
}

int vtl_bool_destroy(vtl_value* value) {
    return vtl::release(value);
}

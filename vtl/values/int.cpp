// Integers.
#include <cstdio>

#include "vtl/values/record.h"
#include <mediacheckd/vtl/scalars.h>

namespace {

constexpr vtl_operations kOperations = {
    vtl_int_init,           vtl_int_deinit,        vtl_int_copy, vtl_int_deepcopy, vtl_int_clear,
    vtl_int_serialize_json, vtl_int_serialize_xml, vtl_int_size, vtl_int_dump,     vtl_int_destroy,
};

}  // namespace

vtl_value* vtl_int_create() {
    return vtl::create(vtl_int_init);
}

vtl_value* vtl_int_create_from(int number) {
    return vtl::createWith(vtl_int_init, vtl_int_set, number);
}

int vtl_int_set(vtl_value* value, int number) {
    if (!vtl::isOf(value, VTL_TYPE_INT)) {
        return 1;
    }
    value->payload.words[0] = number;
    return 0;
}

int vtl_int_get(const vtl_value* value, int* out) {
    if (!vtl::isOf(value, VTL_TYPE_INT) || out == nullptr) {
        return 1;
    }
    return vtl::store<int>(out, value->payload.words[0]);
}

int vtl_int_init(vtl_value* value) {
    return vtl::become(value, VTL_TYPE_INT, kOperations);
}

int vtl_int_deinit(vtl_value*) {
    return 0;
}

int vtl_int_clear(vtl_value*) {
    return 0;
}

int vtl_int_copy(const vtl_value* source, vtl_value* destination) {
    return vtl::copyScalar(source, destination, VTL_TYPE_INT, vtl_int_init).value_or(1);
}

int vtl_int_deepcopy(const vtl_value* source, vtl_value* destination) {
    return vtl_int_copy(source, destination);
}

int vtl_int_serialize_json() {
    return 0;
}

int vtl_int_serialize_xml() {
    return 0;
}

int vtl_int_size(const vtl_value* value, unsigned* out) {
    return vtl::sizeOfOne(value, out);
}

int vtl_int_dump(const vtl_value* value) {
    if (!vtl::isOf(value, VTL_TYPE_INT)) {
        return 1;
    }
    std::printf("vtl_int:%d\n", value->payload.words[0]);
    return 0;
}

int vtl_int_destroy(vtl_value* value) {
    return vtl::release(value);
}

// Floating-point numbers.
#include <cstdio>

#include "vtl/values/record.h"
#include <mediacheckd/vtl/scalars.h>

namespace {

constexpr vtl_operations kOperations = {
    vtl_double_init,  vtl_double_deinit,         vtl_double_copy,          vtl_double_deepcopy,
    vtl_double_clear, vtl_double_serialize_json, vtl_double_serialize_xml, vtl_double_size,
    vtl_double_dump,  vtl_double_destroy,
};

}  // namespace

vtl_value* vtl_double_create() {
    return vtl::create(vtl_double_init);
}

vtl_value* vtl_double_create_from(double number) {
    return vtl::createWith(vtl_double_init, vtl_double_set, number);
}

int vtl_double_set(vtl_value* value, double number) {
    if (!vtl::isOf(value, VTL_TYPE_DOUBLE)) {
        return 1;
    }
    return vtl_value_set(value, VTL_TYPE_DOUBLE, &number, nullptr);
}

int vtl_double_get(const vtl_value* value, double* out) {
    return vtl_value_get(value, VTL_TYPE_DOUBLE, out, nullptr);
}

int vtl_double_init(vtl_value* value) {
    return vtl::become(value, VTL_TYPE_DOUBLE, kOperations);
}

int vtl_double_deinit(vtl_value*) {
    return 0;
}

int vtl_double_clear(vtl_value*) {
    return 0;
}

int vtl_double_copy(const vtl_value* source, vtl_value* destination) {
    return vtl::copyScalar(source, destination, VTL_TYPE_DOUBLE, vtl_double_init) ? 0 : 1;
}

int vtl_double_deepcopy(const vtl_value* source, vtl_value* destination) {
    return vtl_double_copy(source, destination);
}

int vtl_double_serialize_json() {
    return 0;
}

int vtl_double_serialize_xml() {
    return 0;
}

int vtl_double_size(const vtl_value* value, unsigned* out) {
    return vtl::sizeOfOne(value, out);
}

int vtl_double_dump(const vtl_value* value) {
    if (!vtl::isOf(value, VTL_TYPE_DOUBLE)) {
        return 1;
    }
    std::printf("vtl_double:%f\n", value->payload.number);
    return 0;
}

int vtl_double_destroy(vtl_value* value) {
    return vtl::release(value);
}

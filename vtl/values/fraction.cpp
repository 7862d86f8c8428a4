// Fractions.
#include <cstdio>

#include "vtl/values/record.h"
#include <mediacheckd/vtl/scalars.h>

namespace {

constexpr vtl_operations kOperations = {
    vtl_fraction_init,          vtl_fraction_deinit, vtl_fraction_copy,
    vtl_fraction_deepcopy,      vtl_fraction_clear,  vtl_fraction_serialize_json,
    vtl_fraction_serialize_xml, vtl_fraction_size,   vtl_fraction_dump,
    vtl_fraction_destroy,
};

}  // namespace

vtl_value* vtl_fraction_create() {
    return vtl::create(vtl_fraction_init);
}

vtl_value* vtl_fraction_create_from(int numerator, int denominator) {
    return vtl::createWith(vtl_fraction_init, vtl_fraction_set, numerator, denominator);
}

int vtl_fraction_set(vtl_value* value, int numerator, int denominator) {
    if (!vtl::isOf(value, VTL_TYPE_FRACTION)) {
        return 1;
    }
    value->payload.words[0] = numerator;
    value->payload.words[1] = denominator;
    return 0;
}

int vtl_fraction_get(const vtl_value* value, int* numerator, int* denominator) {
    if (!vtl::isOf(value, VTL_TYPE_FRACTION) || numerator == nullptr || denominator == nullptr) {
        return 1;
    }
    *numerator = value->payload.words[0];
    *denominator = value->payload.words[1];
    return 0;
}

int vtl_fraction_init(vtl_value* value) {
    return vtl::become(value, VTL_TYPE_FRACTION, kOperations);
}

int vtl_fraction_deinit(vtl_value*) {
    return 0;
}

int vtl_fraction_clear(vtl_value*) {
    return 0;
}

int vtl_fraction_copy(const vtl_value* source, vtl_value* destination) {
    return vtl::copyScalar(source, destination, VTL_TYPE_FRACTION, vtl_fraction_init) ? 0 : 1;
}

int vtl_fraction_deepcopy(const vtl_value* source, vtl_value* destination) {
    return vtl_fraction_copy(source, destination);
}

int vtl_fraction_serialize_json() {
    return 0;
}

int vtl_fraction_serialize_xml() {
    return 0;
}

int vtl_fraction_size(const vtl_value* value, unsigned* out) {
    return vtl::sizeOfOne(value, out);
}

int vtl_fraction_dump(const vtl_value* value) {
    if (!vtl::isOf(value, VTL_TYPE_FRACTION)) {
        return 1;
    }
    std::printf("vtl_fraction:%d/%d\n", value->payload.words[0], value->payload.words[1]);
    return 0;
}

int vtl_fraction_destroy(vtl_value* value) {
    return vtl::release(value);
}

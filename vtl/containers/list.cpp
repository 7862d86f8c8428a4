#include <mediacheckd/vtl/list.h>

#include "vtl/containers/container.h"
#include "vtl/containers/sequence.h"
#include "vtl/values/record.h"

namespace {

vtl_chain* elementsOf(const vtl_value* list) {
    return vtl::chainOf(list, VTL_TYPE_LIST);
}

}  // namespace

constinit const vtl::ContainerType vtl::kListType = {
    .code = VTL_TYPE_LIST,
    .operations =
        {
            vtl_list_init,
            vtl_list_deinit,
            vtl_list_copy,
            vtl_list_deepcopy,
            vtl_list_clear,
            vtl_list_serialize_json,
            vtl_list_serialize_xml,
            vtl_list_size,
            vtl_list_dump,
            vtl_list_destroy,
        },
    .appendCopy = vtl::appendClone,
    .destroyItems = vtl::destroyValues,
};

vtl_value* vtl_list_create() {
    return vtl::create(vtl_list_init);
}

int vtl_list_init(vtl_value* value) {
    return vtl::initContainer(value, vtl::kListType);
}

int vtl_list_size(const vtl_value* list, unsigned* out) {
    return vtl_chain_count(elementsOf(list), out);
}

int vtl_list_insert(vtl_value* list, int index, unsigned type, const void* value) {
    return vtl::insertElement(elementsOf(list), index, type, value);
}

int vtl_list_insert_int(vtl_value* list, int index, int number) {
    return vtl_list_insert(list, index, VTL_TYPE_INT, &number);
}

int vtl_list_insert_bool(vtl_value* list, int index, int truth) {
    return vtl_list_insert(list, index, VTL_TYPE_BOOL, &truth);
}

int vtl_list_insert_double(vtl_value* list, int index, double number) {
    return vtl_list_insert(list, index, VTL_TYPE_DOUBLE, &number);
}

int vtl_list_append(vtl_value* list, unsigned type, const void* value) {
    return vtl::appendElement(elementsOf(list), type, value);
}

int vtl_list_append_int(vtl_value* list, int number) {
    return vtl_list_append(list, VTL_TYPE_INT, &number);
}

int vtl_list_append_bool(vtl_value* list, int truth) {
    return vtl_list_append(list, VTL_TYPE_BOOL, &truth);
}

int vtl_list_append_double(vtl_value* list, double number) {
    return vtl_list_append(list, VTL_TYPE_DOUBLE, &number);
}

int vtl_list_append_voidptr(vtl_value* list, void* pointer) {
    return vtl_list_append(list, VTL_TYPE_VOIDPTR, pointer);
}

int vtl_list_get(const vtl_value* list, int index, unsigned target, void* out, void* extra) {
    return vtl::convertElement(elementsOf(list), index, target, out, extra);
}

int vtl_list_get_string(const vtl_value* list, int index, char* buffer, unsigned size) {
    return vtl_list_get(list, index, VTL_TYPE_STRING, buffer, &size);
}

int vtl_list_get_int(const vtl_value* list, int index, int* out) {
    return vtl_list_get(list, index, VTL_TYPE_INT, out, nullptr);
}

int vtl_list_get_bool(const vtl_value* list, int index, int* out) {
    return vtl_list_get(list, index, VTL_TYPE_BOOL, out, nullptr);
}

int vtl_list_get_double(const vtl_value* list, int index, double* out) {
    return vtl_list_get(list, index, VTL_TYPE_DOUBLE, out, nullptr);
}

int vtl_list_get_voidptr(const vtl_value* list, int index, void** out) {
    return vtl_list_get(list, index, VTL_TYPE_VOIDPTR, out, nullptr);
}

int vtl_list_get_any(const vtl_value* list, int index, vtl_value** out) {
    return vtl_list_get(list, index, VTL_TYPE_ANY, out, nullptr);
}

int vtl_list_get_element(const vtl_value* list, int index, vtl_value** out) {
    return vtl_list_get_any(list, index, out);
}

int vtl_list_remove(vtl_value* list, int index) {
    vtl_value* element = nullptr;
    const int result = vtl::takeElement(elementsOf(list), index, &element);
    vtl_destroy(element);
    return result;
}

int vtl_list_clear(vtl_value* list) {
    return vtl::clearElements(elementsOf(list));
}

int vtl_list_deinit(vtl_value* list) {
    vtl_list_clear(list);
    return vtl::releaseChain(list, VTL_TYPE_LIST);
}

int vtl_list_destroy(vtl_value* list) {
    vtl_list_deinit(list);
    return vtl::release(list);
}

int vtl_list_copy(const vtl_value* source, vtl_value* destination) {
    return elementsOf(source) != nullptr ? vtl::shareChain(source, destination, vtl::kListType) : 1;
}

int vtl_list_deepcopy(const vtl_value* source, vtl_value* destination) {
    return vtl::copyContainer(source, destination, vtl::kListType);
}

int vtl_list_dump(const vtl_value* list) {
    return elementsOf(list) != nullptr ? 0 : 1;
}

int vtl_list_serialize_json() {
    return 0;
}

int vtl_list_serialize_xml() {
    return 0;
}

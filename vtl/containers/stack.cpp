#include <mediacheckd/vtl/stack.h>

#include <array>
#include <cstdio>

#include "vtl/containers/container.h"
#include "vtl/containers/sequence.h"
#include "vtl/values/record.h"
#include <mediacheckd/vtl/string.h>

namespace {

constexpr int kTop = 0;

vtl_chain* elementsOf(const vtl_value* stack) {
    return vtl::chainOf(stack, VTL_TYPE_STACK);
}

}  // namespace

constinit const vtl::ContainerType vtl::kStackType = {
    .code = VTL_TYPE_STACK,
    .operations =
        {
            vtl_stack_init,
            vtl_stack_deinit,
            vtl_stack_copy,
            vtl_stack_deepcopy,
            vtl_stack_clear,
            vtl_stack_serialize_json,
            vtl_stack_serialize_xml,
            vtl_stack_size,
            nullptr,
            vtl_stack_destroy,
        },
    .appendCopy = vtl::appendClone,
    .destroyItems = vtl::destroyValues,
};

vtl_value* vtl_stack_create() {
    vtl_value* stack = vtl::create(vtl_stack_init);
    if (stack != nullptr && elementsOf(stack) == nullptr) {
        vtl_stack_destroy(stack);
        return nullptr;
    }
    return stack;
}

int vtl_stack_init(vtl_value* value) {
    vtl::initContainer(value, vtl::kStackType);
    return value != nullptr ? 0 : 1;
}

int vtl_stack_size(const vtl_value* stack, unsigned* out) {
    return vtl_chain_count(elementsOf(stack), out);
}

int vtl_stack_push(vtl_value* stack, unsigned type, const void* value) {
    return vtl_stack_insert(stack, kTop, type, value);
}

int vtl_stack_push_int(vtl_value* stack, int number) {
    return vtl_stack_push(stack, VTL_TYPE_INT, &number);
}

int vtl_stack_push_bool(vtl_value* stack, int truth) {
    return vtl_stack_push(stack, VTL_TYPE_BOOL, &truth);
}

int vtl_stack_push_double(vtl_value* stack, double number) {
    return vtl_stack_push(stack, VTL_TYPE_DOUBLE, &number);
}

int vtl_stack_insert(vtl_value* stack, int index, unsigned type, const void* value) {
    return vtl::insertElement(elementsOf(stack), index, type, value);
}

int vtl_stack_insert_int(vtl_value* stack, int index, int number) {
    return vtl_stack_insert(stack, index, VTL_TYPE_INT, &number);
}

int vtl_stack_insert_bool(vtl_value* stack, int index, int truth) {
    return vtl_stack_insert(stack, index, VTL_TYPE_BOOL, &truth);
}

int vtl_stack_insert_double(vtl_value* stack, int index, double number) {
    return vtl_stack_insert(stack, index, VTL_TYPE_DOUBLE, &number);
}

int vtl_stack_append(vtl_value* stack, unsigned type, const void* value) {
    return vtl::appendElement(elementsOf(stack), type, value);
}

int vtl_stack_append_int(vtl_value* stack, int number) {
    return vtl_stack_append(stack, VTL_TYPE_INT, &number);
}

int vtl_stack_append_bool(vtl_value* stack, int truth) {
    return vtl_stack_append(stack, VTL_TYPE_BOOL, &truth);
}

int vtl_stack_append_double(vtl_value* stack, double number) {
    return vtl_stack_append(stack, VTL_TYPE_DOUBLE, &number);
}

int vtl_stack_get(const vtl_value* stack, int index, unsigned target, void* out, void* extra) {
    return vtl::convertElement(elementsOf(stack), index, target, out, extra);
}

int vtl_stack_get_string(const vtl_value* stack, int index, char* buffer, unsigned size) {
    return vtl_stack_get(stack, index, VTL_TYPE_STRING, buffer, &size);
}

int vtl_stack_get_int(const vtl_value* stack, int index, int* out) {
    return vtl_stack_get(stack, index, VTL_TYPE_INT, out, nullptr);
}

int vtl_stack_get_bool(const vtl_value* stack, int index, int* out) {
    return vtl_stack_get(stack, index, VTL_TYPE_BOOL, out, nullptr);
}

int vtl_stack_get_double(const vtl_value* stack, int index, double* out) {
    return vtl_stack_get(stack, index, VTL_TYPE_DOUBLE, out, nullptr);
}

int vtl_stack_get_voidptr(const vtl_value* stack, int index, void** out) {
    return vtl_stack_get(stack, index, VTL_TYPE_VOIDPTR, out, nullptr);
}

int vtl_stack_get_any(const vtl_value* stack, int index, vtl_value** out) {
    return vtl_stack_get(stack, index, VTL_TYPE_ANY, out, nullptr);
}

int vtl_stack_pop(vtl_value* stack, unsigned target, void* out, void* extra) {
    if (out == nullptr) {
        return 1;
    }
    vtl_stack_get(stack, kTop, target, out, extra);
    return vtl_stack_remove(stack, kTop);
}

int vtl_stack_remove(vtl_value* stack, int index) {
    vtl_value* element = nullptr;
    return vtl::takeElement(elementsOf(stack), index, &element);
}

int vtl_stack_peek(const vtl_value* stack, int index, vtl_value** out) {
    return vtl_stack_get_any(stack, index, out);
}

int vtl_stack_text_length(const vtl_value* stack, int index, unsigned* out) {
    vtl_value* element = nullptr;
    if (out == nullptr || vtl_stack_peek(stack, index, &element) != 0) {
        return 1;
    }
    return element->type == VTL_TYPE_STRING ? vtl_string_size(element, out) : 0;
}

int vtl_stack_clear(vtl_value* stack) {
    return vtl::clearElements(elementsOf(stack));
}

int vtl_stack_deinit(vtl_value* stack) {
    return vtl::releaseChain(stack, VTL_TYPE_STACK);
}

int vtl_stack_destroy(vtl_value* stack) {
    vtl_stack_deinit(stack);
    return vtl::release(stack);
}

int vtl_stack_copy(const vtl_value* source, vtl_value* destination) {
    return elementsOf(source) != nullptr ? vtl::shareChain(source, destination, vtl::kStackType)
                                         : 1;
}

int vtl_stack_deepcopy(const vtl_value* source, vtl_value* destination) {
    return vtl::copyContainer(source, destination, vtl::kStackType);
}

int vtl_stack_dump(const vtl_value* stack) {
    const vtl_chain* elements = elementsOf(stack);
    if (elements == nullptr) {
        return 1;
    }
    int index = 0;
    for (const vtl_chain_node* node = elements->head; node != nullptr; node = node->next) {
        std::array<char, 75> text{};
        auto size = static_cast<unsigned>(text.size());
        vtl_value_get(static_cast<const vtl_value*>(node->item), VTL_TYPE_STRING, text.data(),
                      &size);
        text.back() = '\0';
        std::printf("%d: %s\n", index++, text.data());
    }
    return 0;
}

int vtl_stack_serialize_json() {
    return 0;
}

int vtl_stack_serialize_xml() {
    return 0;
}

#include <mediacheckd/vtl/string.h>

#include <cstdio>
#include <cstring>

#include "vtl/values/record.h"
#include <mediacheckd/vtl/memory.h>

namespace {

constexpr unsigned kNoText = ~0U;

constexpr vtl_operations kOperations = {
    vtl_string_init,  vtl_string_deinit,         vtl_string_copy,          vtl_string_deepcopy,
    vtl_string_clear, vtl_string_serialize_json, vtl_string_serialize_xml, vtl_string_size,
    vtl_string_dump,  vtl_string_destroy,
};

// Null also for a value that is not a string.
const char* textOf(const vtl_value* value) {
    return vtl::isOf(value, VTL_TYPE_STRING) ? value->payload.text : nullptr;
}

}  // namespace

vtl_value* vtl_string_create() {
    return vtl::create(vtl_string_init);
}

vtl_value* vtl_string_create_from(const char* text) {
    return vtl::createWith(vtl_string_init, vtl_string_set, text);
}

int vtl_string_set(vtl_value* value, const char* text) {
    if (!vtl::isOf(value, VTL_TYPE_STRING) || text == nullptr) {
        return 1;
    }
    return vtl::storeText(*value, text, std::strlen(text));
}

int vtl_string_get(const vtl_value* value, char** out) {
    return vtl_value_get(value, VTL_TYPE_TEXT, out, nullptr);
}

int vtl_string_get_copy(const vtl_value* value, char* buffer, unsigned size) {
    return textOf(value) != nullptr ? vtl_value_get(value, VTL_TYPE_STRING, buffer, &size) : 1;
}

int vtl_string_init(vtl_value* value) {
    if (value != nullptr && value->type != VTL_TYPE_STRING) {
        value->payload.text = nullptr;
    }
    return vtl::become(value, VTL_TYPE_STRING, kOperations);
}

int vtl_string_deinit(vtl_value* value) {
    if (value == nullptr) {
        return 1;
    }
    if (value->type == VTL_TYPE_STRING) {
        vtl_free(value->payload.text);
        value->payload.text = nullptr;
    }
    return 0;
}

int vtl_string_clear(vtl_value* value) {
    return vtl_string_deinit(value);
}

int vtl_string_copy(const vtl_value* source, vtl_value* destination) {
    if (!vtl::isOf(source, VTL_TYPE_STRING) || destination == nullptr) {
        return 1;
    }
    if (source == destination) {
        return 0;
    }
    const char* text = textOf(source);
    // The source may lie inside the destination, which is let go.
    char* const copy = text != nullptr ? vtl::copyText(text, std::strlen(text)) : nullptr;
    vtl_deinit(destination);
    vtl_string_init(destination);
    destination->payload.text = copy;
    return text != nullptr && copy == nullptr ? 1 : 0;
}

int vtl_string_deepcopy(const vtl_value* source, vtl_value* destination) {
    return vtl_string_copy(source, destination);
}

int vtl_string_serialize_json() {
    return 0;
}

int vtl_string_serialize_xml() {
    return 0;
}

int vtl_string_size(const vtl_value* value, unsigned* out) {
    if (!vtl::isOf(value, VTL_TYPE_STRING) || out == nullptr) {
        return 1;
    }
    const char* text = textOf(value);
    return vtl::store<unsigned>(
        out, text != nullptr ? static_cast<unsigned>(std::strlen(text)) : kNoText);
}

int vtl_string_dump(const vtl_value* value) {
    const char* text = textOf(value);
    if (text == nullptr) {
        return 1;
    }
    std::printf("vtl_string:%s\n", text);
    return 0;
}

int vtl_string_destroy(vtl_value* value) {
    if (!vtl::isOf(value, VTL_TYPE_STRING)) {
        return 1;
    }
    vtl_string_deinit(value);
    return vtl::release(value);
}

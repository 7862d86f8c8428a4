#include "vtl/values/record.h"

#include <algorithm>
#include <cstring>

#include <mediacheckd/vtl/memory.h>

namespace vtl {

int become(vtl_value* value, unsigned type, const vtl_operations& operations) {
    if (value == nullptr) {
        return 1;
    }
    const auto keptDump = value->ops.dump;
    value->type = type;
    value->ops = operations;
    if (operations.dump == nullptr) {
        value->ops.dump = keptDump;
    }
    return 0;
}

vtl_value* create(Init init) {
    vtl_value* value = vtl_value_alloc();
    if (value == nullptr || init(value) == 0) {
        return value;
    }
    vtl_free(value);
    return nullptr;
}

int release(vtl_value* value) {
    if (value == nullptr) {
        return 1;
    }
    vtl_free(value);
    return 0;
}

std::optional<int> copyScalar(const vtl_value* source, vtl_value* destination, unsigned type,
                              Init init) {
    if (!isOf(source, type) || destination == nullptr) {
        return std::nullopt;
    }
    // The source may lie inside the destination, which is let go.
    const vtl_payload payload = source->payload;
    const int released = vtl_deinit(destination);
    init(destination);
    destination->payload = payload;
    return released;
}

int sizeOfOne(const vtl_value* value, unsigned* out) {
    return value != nullptr && out != nullptr ? store<unsigned>(out, 1) : 1;
}

int storeText(vtl_value& value, const char* text, size_t limit) {
    char* const copy = copyText(text, limit);
    if (value.type == VTL_TYPE_STRING) {
        vtl_free(value.payload.text);
    }
    value.payload.text = copy;
    return copy != nullptr ? 0 : 1;
}

char* copyText(const char* text, size_t limit) {
    const size_t length = std::strlen(text);
    const size_t copied = std::min(length, limit);
    auto* const copy = static_cast<char*>(vtl_malloc(length + 1));
    if (copy != nullptr) {
        std::memcpy(copy, text, copied);
        copy[copied] = '\0';
    }
    return copy;
}

}  // namespace vtl

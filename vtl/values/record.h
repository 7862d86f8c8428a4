// What the types share: how a record becomes a value of a type, is copied and is let go.
#pragma once

#include <cstddef>
#include <optional>
#include <type_traits>

#include <mediacheckd/vtl/value.h>

namespace vtl {

using Init = int (*)(vtl_value*);

inline bool isOf(const vtl_value* value, unsigned type) {
    return value != nullptr && value->type == type;
}

// Whether the value is a dict, a list or a stack.
inline bool isContainer(const vtl_value& value) {
    return value.type == VTL_TYPE_DICT || value.type == VTL_TYPE_LIST ||
           value.type == VTL_TYPE_STACK;
}

// Whether a C value of the type comes in two variables, the second one extra.
inline bool needsExtra(unsigned type) {
    return type == VTL_TYPE_STRING || type == VTL_TYPE_FRACTION;
}

// Writes a conversion's result to the caller's variable, whose type each call names. Returns 0.
template <typename T>
int store(void* out, std::type_identity_t<T> result) {
    *static_cast<T*>(out) = result;
    return 0;
}

// Sets type and table. A type without a dump leaves that slot as it was.
int become(vtl_value* value, unsigned type, const vtl_operations& operations);

// A new record, initialised; null when either step fails.
[[nodiscard]] vtl_value* create(Init init);

// A new record that the setter was given the content for, whose success is not examined; or null.
template <typename... Content>
[[nodiscard]] vtl_value* createWith(Init init, int (*set)(vtl_value*, Content...),
                                    Content... content) {
    vtl_value* value = create(init);
    if (value != nullptr) {
        static_cast<void>(set(value, content...));
    }
    return value;
}

// Releases the record alone. Returns 1 for null.
int release(vtl_value* value);

// Makes the destination a value with the source's payload, which must own nothing.
// Returns what the destination's own deinit answered; nothing, and changes nothing, when the
// source is not of the type or the destination is null.
std::optional<int> copyScalar(const vtl_value* source, vtl_value* destination, unsigned type,
                              Init init);

// The size slot of a type that always counts as one.
int sizeOfOne(const vtl_value* value, unsigned* out);

// A copy of the text, at most limit bytes of it, from vtl_malloc; null when memory does not
// suffice.
[[nodiscard]] char* copyText(const char* text, size_t limit);

// Stores a copy of the text, at most limit bytes of it, for a string's old text, of which it may
// be a part. Returns 1, and leaves no text, when memory does not suffice.
int storeText(vtl_value& value, const char* text, size_t limit);

}  // namespace vtl

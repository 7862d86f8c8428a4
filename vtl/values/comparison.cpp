// How two values compare, whatever their types.
#include <array>
#include <cmath>
#include <cstring>

#include "vtl/values/record.h"
#include <mediacheckd/vtl/value.h>

namespace {

constexpr double kTolerance = 0.000001;

// Holds any number as text: the largest double has 309 digits, and a sign, the point, six decimals
// and the closing zero come with them.
using NumberText = std::array<char, 320>;

// Null for a value that has no text.
const char* comparedText(const vtl_value& value, NumberText& buffer) {
    if (value.type == VTL_TYPE_STRING) {
        return value.payload.text != nullptr ? value.payload.text : "";
    }
    auto size = static_cast<unsigned>(buffer.size());
    return vtl_value_get(&value, VTL_TYPE_STRING, buffer.data(), &size) == 0 ? buffer.data()
                                                                             : nullptr;
}

bool isReference(const vtl_value& value) {
    return value.type == VTL_TYPE_VOIDPTR || vtl::isContainer(value);
}

// The first word of the payload: a whole pointer where the value holds one.
uintptr_t firstWord(const vtl_value& value) {
    const bool pointer = isReference(value) || value.type == VTL_TYPE_STRING;
    return pointer ? reinterpret_cast<uintptr_t>(value.payload.pointer)
                   : static_cast<uint32_t>(value.payload.words[0]);
}

unsigned compareReferences(const vtl_value& a, const vtl_value& b) {
    return firstWord(a) == firstWord(b) ? VTL_COMPARE_SAME_STORAGE : 0;
}

unsigned compareTexts(const vtl_value& a, const vtl_value& b) {
    NumberText bufferA;
    NumberText bufferB;
    const char* textA = comparedText(a, bufferA);
    const char* textB = comparedText(b, bufferB);
    if (textA == nullptr || textB == nullptr) {
        return 0;
    }
    unsigned result = std::strcmp(textA, textB) == 0 ? VTL_COMPARE_EQUAL : VTL_COMPARE_LESS;
    if (a.type == b.type && a.payload.text != nullptr && a.payload.text == b.payload.text) {
        result |= VTL_COMPARE_SAME_STORAGE;
    }
    return result;
}

// Every int is exact as a double and differs from the next by more than the tolerance: what holds
// for doubles and fractions holds for ints and bools.
unsigned compareNumbers(const vtl_value& a, const vtl_value& b) {
    double numberA = 0;
    double numberB = 0;
    if (vtl_value_get_double(&a, &numberA) != 0 || vtl_value_get_double(&b, &numberB) != 0) {
        return 0;
    }
    const double difference = numberA - numberB;
    if (std::fabs(difference) < kTolerance) {
        return VTL_COMPARE_EQUAL;
    }
    return difference < 0 ? VTL_COMPARE_LESS : VTL_COMPARE_GREATER;
}

unsigned compareContents(const vtl_value& a, const vtl_value& b) {
    if (isReference(a) || isReference(b)) {
        return compareReferences(a, b);
    }
    if (a.type == VTL_TYPE_STRING || b.type == VTL_TYPE_STRING) {
        return compareTexts(a, b);
    }
    return compareNumbers(a, b);
}

}  // namespace

unsigned vtl_value_compare(const vtl_value* a, const vtl_value* b) {
    if (a == nullptr || b == nullptr) {
        return 0;
    }
    const unsigned sameType = a->type == b->type ? VTL_COMPARE_SAME_TYPE : 0;
    return sameType | compareContents(*a, *b);
}

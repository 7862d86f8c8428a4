// Values read as another type.
#include <strings.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "vtl/values/record.h"
#include <mediacheckd/vtl/value.h>

namespace {

using vtl::store;
using IntLimits = std::numeric_limits<int>;

constexpr double kFractionDenominator = 1000;

// The nearest int below the number or, when it is negative, above it; 0 for not-a-number.
int truncated(double number) {
    if (std::isnan(number)) {
        return 0;
    }
    return static_cast<int>(std::clamp<double>(number, IntLimits::min(), IntLimits::max()));
}

int rounded(double number) {
    return truncated(number + 0.5);
}

double numberOf(const vtl_value& value) {
    return value.type == VTL_TYPE_DOUBLE ? value.payload.number
                                         : static_cast<double>(value.payload.words[0]) /
                                               static_cast<double>(value.payload.words[1]);
}

int toText(const vtl_value& value, char* out, unsigned size) {
    switch (value.type) {
        case VTL_TYPE_STRING:
            if (value.payload.text == nullptr) {
                return 1;
            }
            std::strncpy(out, value.payload.text, size);
            return 0;
        case VTL_TYPE_INT:
            std::snprintf(out, size, "%d", value.payload.words[0]);
            return 0;
        case VTL_TYPE_BOOL:
            std::snprintf(out, size, "%s", value.payload.words[0] != 0 ? "true" : "false");
            return 0;
        case VTL_TYPE_DOUBLE:
        case VTL_TYPE_FRACTION:
            std::snprintf(out, size, "%f", numberOf(value));
            return 0;
        default:
            return 1;
    }
}

int leadingInt(const char* text, void* out) {
    if (text == nullptr) {
        return 1;
    }
    char* end = nullptr;
    const long number = std::strtol(text, &end, 10);
    store<int>(out, static_cast<int>(std::clamp<long>(number, IntLimits::min(), IntLimits::max())));
    return *end != '\0' ? 1 : 0;
}

int leadingDouble(const char* text, void* out) {
    if (text == nullptr) {
        return 1;
    }
    char* end = nullptr;
    const double number = std::strtod(text, &end);
    store<double>(out, truncated(number));
    return *end != '\0' ? 1 : 0;
}

int toInt(const vtl_value& value, void* out) {
    switch (value.type) {
        case VTL_TYPE_STRING:
            return leadingInt(value.payload.text, out);
        case VTL_TYPE_INT:
        case VTL_TYPE_BOOL:
            return store<int>(out, value.payload.words[0]);
        case VTL_TYPE_VOIDPTR:
            return store<int>(
                out, static_cast<int32_t>(reinterpret_cast<uintptr_t>(value.payload.pointer)));
        case VTL_TYPE_DOUBLE:
        case VTL_TYPE_FRACTION:
            return store<int>(out, rounded(numberOf(value)));
        default:
            return 1;
    }
}

bool isTrue(const char* text) {
    constexpr std::array kFalseTexts = {"", "false", "0", "off", "no"};
    return std::none_of(kFalseTexts.begin(), kFalseTexts.end(),
                        [text](const char* word) { return strcasecmp(text, word) == 0; });
}

int toBool(const vtl_value& value, void* out) {
    switch (value.type) {
        case VTL_TYPE_STRING:
            return value.payload.text != nullptr ? store<int>(out, isTrue(value.payload.text)) : 1;
        case VTL_TYPE_INT:
        case VTL_TYPE_BOOL:
        case VTL_TYPE_FRACTION:
            return store<int>(out, value.payload.words[0] != 0);
        case VTL_TYPE_DOUBLE:
            return store<int>(out, rounded(value.payload.number) != 0);
        default:
            return 1;
    }
}

int toDouble(const vtl_value& value, void* out) {
    switch (value.type) {
        case VTL_TYPE_STRING:
            return leadingDouble(value.payload.text, out);
        case VTL_TYPE_INT:
        case VTL_TYPE_BOOL:
            return store<double>(out, value.payload.words[0]);
        case VTL_TYPE_DOUBLE:
        case VTL_TYPE_FRACTION:
            return store<double>(out, numberOf(value));
        default:
            return 1;
    }
}

int toFraction(const vtl_value& value, void* numerator, void* denominator) {
    switch (value.type) {
        case VTL_TYPE_STRING:
            if (value.payload.text == nullptr) {
                return 1;
            }
            [[fallthrough]];
        case VTL_TYPE_INT:
        case VTL_TYPE_BOOL:
            store<int>(denominator, 1);
            return toInt(value, numerator);
        case VTL_TYPE_DOUBLE:
            store<int>(numerator, rounded(value.payload.number * kFractionDenominator));
            return store<int>(denominator, static_cast<int>(kFractionDenominator));
        case VTL_TYPE_FRACTION:
            store<int>(numerator, value.payload.words[0]);
            return store<int>(denominator, value.payload.words[1]);
        default:
            return 1;
    }
}

}  // namespace

int vtl_value_get(const vtl_value* value, unsigned target, void* out, void* extra) {
    if (value == nullptr || out == nullptr || (vtl::needsExtra(target) && extra == nullptr)) {
        return 1;
    }
    switch (target) {
        case VTL_TYPE_STRING:
            return toText(*value, static_cast<char*>(out), *static_cast<const unsigned*>(extra));
        case VTL_TYPE_TEXT:
            return value->type == VTL_TYPE_STRING ? store<char*>(out, value->payload.text) : 1;
        case VTL_TYPE_INT:
            return toInt(*value, out);
        case VTL_TYPE_BOOL:
            return toBool(*value, out);
        case VTL_TYPE_DOUBLE:
            return toDouble(*value, out);
        case VTL_TYPE_FRACTION:
            return toFraction(*value, out, extra);
        case VTL_TYPE_VOIDPTR:
            return value->type == VTL_TYPE_VOIDPTR ? store<void*>(out, value->payload.pointer) : 1;
        case VTL_TYPE_ANY:
            return store<vtl_value*>(out, const_cast<vtl_value*>(value));
        case VTL_TYPE_DICT:
        case VTL_TYPE_LIST:
        case VTL_TYPE_STACK:
            return value->type == target ? store<vtl_value*>(out, const_cast<vtl_value*>(value))
                                         : 1;
        default:
            return 0;
    }
}

int vtl_value_get_string(const vtl_value* value, char* out) {
    return vtl_value_get(value, VTL_TYPE_STRING, out, nullptr);
}

int vtl_value_get_text(const vtl_value* value, char** out) {
    return vtl_value_get(value, VTL_TYPE_TEXT, out, nullptr);
}

int vtl_value_get_int(const vtl_value* value, int* out) {
    return vtl_value_get(value, VTL_TYPE_INT, out, nullptr);
}

int vtl_value_get_bool(const vtl_value* value, int* out) {
    return vtl_value_get(value, VTL_TYPE_BOOL, out, nullptr);
}

int vtl_value_get_double(const vtl_value* value, double* out) {
    return vtl_value_get(value, VTL_TYPE_DOUBLE, out, nullptr);
}

int vtl_value_get_fraction(const vtl_value* value, int* numerator) {
    int denominator = 0;
    return vtl_value_get(value, VTL_TYPE_FRACTION, numerator, &denominator);
}

int vtl_value_get_voidptr(const vtl_value* value, void** out) {
    return vtl_value_get(value, VTL_TYPE_VOIDPTR, out, nullptr);
}

int vtl_value_get_any(const vtl_value* value, vtl_value** out) {
    return vtl_value_get(value, VTL_TYPE_ANY, out, nullptr);
}

int vtl_value_get_dict(const vtl_value* value, vtl_value** out) {
    return vtl_value_get(value, VTL_TYPE_DICT, out, nullptr);
}

int vtl_value_get_list(const vtl_value* value, vtl_value** out) {
    return vtl_value_get(value, VTL_TYPE_LIST, out, nullptr);
}

int vtl_value_get_stack(const vtl_value* value, vtl_value** out) {
    return vtl_value_get(value, VTL_TYPE_STACK, out, nullptr);
}

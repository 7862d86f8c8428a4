#include <cfloat>
#include <utility>

#include "tests/vtl/values.h"
#include "vtl/list.h"
#include "vtl/scalars.h"
#include "vtl/string.h"

namespace {

TEST(Comparison, GivesTheBitsOfEveryPair) {
    int object = 0;
    std::vector<Value> values;
    for (vtl_value* value :
         {vtl_int_create_from(3), vtl_int_create_from(-4), vtl_bool_create_from(3),
          vtl_double_create_from(3.0000001), vtl_fraction_create_from(7, 2),
          vtl_string_create_from("3"), vtl_string_create(), vtl_voidptr_create_from(&object),
          vtl_voidptr_create(), vtl_list_create(), vtl_stack_create(), vtl_dict_create()}) {
        values.emplace_back(value);
    }
    const Value blank(vtl_value_alloc());
    // clang-format off
    constexpr unsigned kExpected[7][7] = {
        //       3  -4   b  3.0 7/2 "3"  ""
        /*3*/  { 9,  5,  8,  8,  2,  8,  2},
        /*-4*/ { 3,  9,  2,  2,  2,  2,  2},
        /*b*/  { 8,  4,  9,  8,  2,  2,  2},
        /*3.0*/{ 8,  4,  8,  9,  2,  2,  2},
        /*7/2*/{ 4,  4,  4,  4,  9,  2,  2},
        /*"3"*/{ 8,  2,  2,  2,  2, 41,  3},
        /*""*/ { 2,  2,  2,  2,  2,  3,  9},
    };
    // clang-format on
    for (size_t i = 0; i < values.size(); ++i) {
        const vtl_value* a = values[i].get();
        for (size_t k = 0; k < values.size(); ++k) {
            const vtl_value* b = values[k].get();
            // The others refer to something and equal themselves alone.
            const unsigned reference = (a->type == b->type ? 1U : 0U) | (a == b ? 32U : 0U);
            EXPECT_EQ(vtl_value_compare(a, b), i < 7 && k < 7 ? kExpected[i][k] : reference)
                << i << " with " << k;
        }
        EXPECT_EQ(vtl_value_compare(a, nullptr) | vtl_value_compare(nullptr, a), 0U);
        EXPECT_EQ(vtl_value_compare(a, blank.get()) | vtl_value_compare(blank.get(), a), 0U);
    }
    EXPECT_EQ(vtl_value_compare(blank.get(), blank.get()), 1U);
}

unsigned compared(vtl_value* a, vtl_value* b) {
    return vtl_value_compare(Value(a).get(), Value(b).get());
}

TEST(Comparison, MeasuresTextsAndSmallDifferences) {
    const auto text = vtl_string_create_from;
    EXPECT_EQ(compared(text("a"), text("a")), 9U);
    EXPECT_EQ(compared(text("b"), text("a")), 3U);
    EXPECT_EQ(compared(vtl_int_create_from(INT32_MIN), vtl_int_create_from(INT32_MAX)), 3U);
    EXPECT_EQ(compared(vtl_double_create_from(-DBL_MAX), text(std::to_string(-DBL_MAX).c_str())),
              8U);
    for (const auto& [number, bits] :
         {std::pair{9e-7, 8U}, {-9e-7, 8U}, {1.1e-6, 2U}, {-1.1e-6, 4U}}) {
        EXPECT_EQ(compared(vtl_int_create_from(0), vtl_double_create_from(number)), bits) << number;
    }
}

}  // namespace

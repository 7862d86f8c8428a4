#include <algorithm>
#include <climits>
#include <cmath>
#include <utility>

#include "tests/vtl/values.h"
#include "vtl/list.h"
#include "vtl/scalars.h"
#include "vtl/string.h"

namespace {

/// The result of a conversion and, when something was stored, what.
template <typename Out>
std::string converted(int (*get)(const vtl_value*, Out*), const vtl_value* value) {
    Out out = -77;
    const int result = get(value, &out);
    return std::to_string(result) + (out == -77 ? "; " : " " + std::to_string(out) + "; ");
}

std::string toFraction(const vtl_value* value) {
    int numerator = -77;
    int denominator = -77;
    const int result = vtl_value_get(value, VTL_TYPE_FRACTION, &numerator, &denominator);
    return std::to_string(result) + " " + std::to_string(numerator) + "/" +
           std::to_string(denominator);
}

TEST(Conversion, GivesEveryTargetFromEverySource) {
    vtl_value* const pointer = vtl_voidptr_create();
    pointer->payload.words[0] = 305;
    pointer->payload.words[1] = 1;  // counts where a pointer takes both words
    const auto text = vtl_string_create_from;
    const auto real = vtl_double_create_from;
    const auto fraction = vtl_fraction_create_from;
    const struct {
        vtl_value* made;
        std::string results;  // as int; bool; double; fraction
        std::string text;
    } rows[] = {
        {text("12"), "0 12; 0 1; 0 12.000000; 0 12/1", "12"},
        {text("12ab"), "1 12; 0 1; 1 12.000000; 1 12/1", "12ab"},
        {text("2.75"), "1 2; 0 1; 0 2.000000; 1 2/1", "2.75"},
        {text(""), "0 0; 0 0; 0 0.000000; 0 0/1", ""},
        {text("False"), "1 0; 0 0; 1 0.000000; 1 0/1", "False"},
        {text("OFF"), "1 0; 0 0; 1 0.000000; 1 0/1", "OFF"},
        {text("0"), "0 0; 0 0; 0 0.000000; 0 0/1", "0"},
        {text("no"), "1 0; 0 0; 1 0.000000; 1 0/1", "no"},
        {text(" no"), "1 0; 0 1; 1 0.000000; 1 0/1", " no"},
        {text("9e99"), "1 9; 0 1; 0 2147483647.000000; 1 9/1", "9e99"},
        {text("-3000000000"), "0 -2147483648; 0 1; 0 -2147483648.000000; 0 -2147483648/1",
         "-3000000000"},
        {text("nan"), "1 0; 0 1; 0 0.000000; 1 0/1", "nan"},
        {vtl_string_create(), "1; 1; 1; 1 -77/-77", "-"},
        {vtl_int_create_from(-5), "0 -5; 0 1; 0 -5.000000; 0 -5/1", "-5"},
        {vtl_bool_create_from(7), "0 7; 0 1; 0 7.000000; 0 7/1", "true"},
        {vtl_bool_create_from(0), "0 0; 0 0; 0 0.000000; 0 0/1", "false"},
        {real(2.5), "0 3; 0 1; 0 2.500000; 0 2500/1000", "2.500000"},
        {real(-2.5), "0 -2; 0 1; 0 -2.500000; 0 -2499/1000", "-2.500000"},
        {real(0.3333), "0 0; 0 0; 0 0.333300; 0 333/1000", "0.333300"},
        {real(3e9), "0 2147483647; 0 1; 0 3000000000.000000; 0 2147483647/1000",
         "3000000000.000000"},
        {real(-HUGE_VAL), "0 -2147483648; 0 1; 0 -inf; 0 -2147483648/1000", "-inf"},
        {real(std::nan("")), "0 0; 0 0; 0 nan; 0 0/1000", "nan"},
        {fraction(7, 2), "0 4; 0 1; 0 3.500000; 0 7/2", "3.500000"},
        {fraction(1, 3), "0 0; 0 1; 0 0.333333; 0 1/3", "0.333333"},
        {fraction(1, 0), "0 2147483647; 0 1; 0 inf; 0 1/0", "inf"},
        {fraction(INT_MIN, -1), "0 2147483647; 0 1; 0 2147483648.000000; 0 -2147483648/-1",
         "2147483648.000000"},
        {pointer, "0 305; 1; 1; 1 -77/-77", "-"},
        {vtl_dict_create(), "1; 1; 1; 1 -77/-77", "{}"},
    };
    for (const auto& [made, results, asText] : rows) {
        const Value owner(made);
        SCOPED_TRACE(testing::Message() << "type " << made->type << ", text " << asText);
        EXPECT_EQ(converted(vtl_value_get_int, made) + converted(vtl_value_get_bool, made) +
                      converted(vtl_value_get_double, made) + toFraction(made),
                  results);
        EXPECT_EQ(shown(made), asText);
        char untouched = '~';
        EXPECT_EACH(0, vtl_value_get(made, 12, &untouched, nullptr), untouched - '~');
        for (const unsigned target : {2U, 7U, 8U, 9U, 10U, 11U}) {
            void* out = &out;
            const bool possible =
                target == VTL_TYPE_ANY || made->type == (target == VTL_TYPE_TEXT ? 1 : target);
            EXPECT_EQ(vtl_value_get(made, target, &out, nullptr), possible ? 0 : 1);
            EXPECT_EQ(out, !possible ? &out : target < 8 ? made->payload.pointer : made);
        }
    }
}

TEST(Conversion, KeepsTextWithinTheBuffer) {
    const Value text(vtl_string_create_from("abc"));
    const Value number(vtl_int_create_from(12345));
    const struct {
        const vtl_value* value;
        unsigned size;
        const char* buffer;  // what is left of eight tildes; a point stands for zero
    } cases[] = {{text.get(), 0, "~~~~~~~~"},   {text.get(), 2, "ab~~~~~~"},
                 {text.get(), 6, "abc...~~"},   {number.get(), 0, "~~~~~~~~"},
                 {number.get(), 1, ".~~~~~~~"}, {number.get(), 4, "123.~~~~"}};
    for (auto [value, size, expected] : cases) {
        std::string buffer(8, '~');
        EXPECT_EQ(vtl_value_get(value, VTL_TYPE_STRING, buffer.data(), &size), 0);
        std::replace(buffer.begin(), buffer.end(), '\0', '.');
        EXPECT_EQ(buffer, expected);
    }
}

TEST(Conversion, StoresWhatItIsGivenAndKeepsTheType) {
    const Value string(vtl_string_create_from("old"));
    const unsigned limit = 3;
    EXPECT_EQ(vtl_value_set(string.get(), VTL_TYPE_STRING, "abcdef", &limit), 0);
    EXPECT_EQ(vtl_value_set(string.get(), VTL_TYPE_STRING, "ghi", nullptr), 1);
    EXPECT_EQ(shown(string.get()), "abc");

    const Value fraction(vtl_fraction_create());
    const int words[] = {-3, 8};
    vtl_value* value = fraction.get();
    EXPECT_EACH(0, vtl_value_set(value, 6, &words[0], &words[1]), toFraction(value) != "0 -3/8",
                vtl_value_set(value, 4, &words[1], nullptr), vtl_value_set(value, 12, "", nullptr),
                toFraction(value) != "0 8/8");
    for (const unsigned type : {2U, 7U, 9U, 10U, 11U}) {
        EXPECT_EQ(vtl_value_set(value, type, words, nullptr), 0);
        EXPECT_EQ(std::exchange(value->payload.pointer, nullptr), words);
    }
}

}  // namespace

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <utility>

#include "tests/vtl/values.h"

namespace {

TEST(Scalars, FillTheirTablesCopyAndDump) {
    int object = 0;
    const std::tuple<vtl_value*, unsigned, unsigned, std::string> cases[] = {
        {vtl_string_create_from("text"), 1, 4, "0 vtl_string:text\n"},
        {vtl_string_create_from(""), 1, 0, "0 vtl_string:\n"},
        {vtl_string_create_from(nullptr), 1, UINT_MAX, "1 "},
        {vtl_int_create_from(-7), 3, 1, "0 vtl_int:-7\n"},
        {vtl_bool_create_from(2), 4, 1, "0 vtl_bool:true\n"},
        {vtl_bool_create_from(0), 4, 1, "0 vtl_bool:false\n"},
        {vtl_double_create_from(2.5), 5, 1, "0 vtl_double:2.500000\n"},
        {vtl_fraction_create_from(1, 3), 6, 1, "0 vtl_fraction:1/3\n"},
        {vtl_voidptr_create_from(&object), 7, 1,
         "0 vtl_voidptr:" + testing::PrintToString<void*>(&object) + "\n"},
    };
    for (const auto& [made, type, size, text] : cases) {
        const Value value(made);
        SCOPED_TRACE(text);
        const auto dump = type == VTL_TYPE_BOOL ? vtl_bool_dump : vtl_dump;
        EXPECT_EQ(made->type, type);
        EXPECT_EQ(made->ops.dump == nullptr, type == VTL_TYPE_BOOL);
        unsigned counted = 99;
        EXPECT_EACH(0, vtl_size(made, &counted), made->ops.serialize_json(),
                    made->ops.serialize_xml(), vtl_copy(made, made));
        EXPECT_EQ(counted, size);
        EXPECT_EQ(printed(dump, made), text);
        for (const auto copy : {vtl_copy, vtl_deepcopy}) {
            for (vtl_value* destination :
                 {vtl_string_create_from("old"), vtl_double_create_from(7), vtl_value_alloc()}) {
                const Value other(destination);
                const auto before = destination->ops;
                const bool refused = before.deinit == nullptr && type == VTL_TYPE_INT;
                EXPECT_EQ(copy(made, destination), refused ? 1 : 0);
                EXPECT_EQ(printed(dump, destination), text) << "copied, whatever the answer";
                EXPECT_EQ(destination->ops.dump,
                          type == VTL_TYPE_BOOL ? before.dump : made->ops.dump);
                EXPECT_EQ(vtl_init(destination), 0);
            }
        }
        EXPECT_EACH(0, vtl_clear(made), vtl_deinit(made));
        EXPECT_EQ(printed(dump, made), type == VTL_TYPE_STRING ? "1 " : text);
    }
}

TEST(Scalars, SetAndGet) {
    const Value string(vtl_string_create_from("a longer text"));
    const Value fraction(vtl_fraction_create_from(4, -6));
    char text[3] = "~~";
    int got[4] = {};
    EXPECT_EACH(0, vtl_string_set(string, "b"), vtl_string_get_copy(string, text, 1),
                vtl_string_deinit(fraction), vtl_clear(string),
                vtl_fraction_get(fraction, &got[0], &got[1]),
                vtl_bool_get(Value(vtl_bool_create_from(2)), &got[2]),
                vtl_int_get(Value(vtl_int_create_from(5)), &got[3]));
    EXPECT_STREQ(text, "b~");
    EXPECT_THAT(got, testing::ElementsAre(4, -6, 1, 5));
    EXPECT_EACH(1, vtl_voidptr_set(Value(vtl_voidptr_create()), nullptr),
                vtl_string_get_copy(string, text, 2));
}

// Result and content of the conversions to int, bool, double, fraction and text.
std::string conversions(const vtl_value* value) {
    int whole = -77;
    int truth = -77;
    double real = -77;
    int parts[] = {-77, -77};
    const int results[] = {vtl_value_get_int(value, &whole), vtl_value_get_bool(value, &truth),
                           vtl_value_get_double(value, &real),
                           vtl_value_get(value, VTL_TYPE_FRACTION, &parts[0], &parts[1])};
    char text[99];
    std::snprintf(text, sizeof text, "%d %d; %d %d; %d %g; %d %d/%d; ", results[0], whole,
                  results[1], truth, results[2], real, results[3], parts[0], parts[1]);
    return text + shown(value);
}

TEST(Conversion, GivesEveryTargetFromEverySource) {
    vtl_value* const pointer = vtl_voidptr_create();
    pointer->payload.words[0] = 305;
    pointer->payload.words[1] = 1;  // counts where a pointer takes both words
    const auto text = vtl_string_create_from;
    const auto real = vtl_double_create_from;
    const auto fraction = vtl_fraction_create_from;
    const std::pair<vtl_value*, std::string> rows[] = {
        {text("012"), "0 12; 0 1; 0 12; 0 12/1; 012"},
        {text("0"), "0 0; 0 0; 0 0; 0 0/1; 0"},
        {text("12ab"), "1 12; 0 1; 1 12; 1 12/1; 12ab"},
        {text("2.75"), "1 2; 0 1; 0 2; 1 2/1; 2.75"},
        {text(""), "0 0; 0 0; 0 0; 0 0/1; "},
        {text("False"), "1 0; 0 0; 1 0; 1 0/1; False"},
        {text("OFF"), "1 0; 0 0; 1 0; 1 0/1; OFF"},
        {text("no"), "1 0; 0 0; 1 0; 1 0/1; no"},
        {text(" no"), "1 0; 0 1; 1 0; 1 0/1;  no"},
        {text("9e99"), "1 9; 0 1; 0 2.14748e+09; 1 9/1; 9e99"},
        {text("-3000000000"), "0 -2147483648; 0 1; 0 -2.14748e+09; 0 -2147483648/1; -3000000000"},
        {vtl_string_create(), "1 -77; 1 -77; 1 -77; 1 -77/-77; -"},
        {vtl_int_create_from(-5), "0 -5; 0 1; 0 -5; 0 -5/1; -5"},
        {vtl_bool_create_from(7), "0 7; 0 1; 0 7; 0 7/1; true"},
        {vtl_bool_create_from(0), "0 0; 0 0; 0 0; 0 0/1; false"},
        {real(2.5), "0 3; 0 1; 0 2.5; 0 2500/1000; 2.500000"},
        {real(-2.5), "0 -2; 0 1; 0 -2.5; 0 -2499/1000; -2.500000"},
        {real(0.3333), "0 0; 0 0; 0 0.3333; 0 333/1000; 0.333300"},
        {real(-HUGE_VAL), "0 -2147483648; 0 1; 0 -inf; 0 -2147483648/1000; -inf"},
        {real(std::nan("")), "0 0; 0 0; 0 nan; 0 0/1000; nan"},
        {fraction(7, 2), "0 4; 0 1; 0 3.5; 0 7/2; 3.500000"},
        {fraction(1, 3), "0 0; 0 1; 0 0.333333; 0 1/3; 0.333333"},
        {fraction(1, 0), "0 2147483647; 0 1; 0 inf; 0 1/0; inf"},
        {pointer, "0 305; 1 -77; 1 -77; 1 -77/-77; -"},
        {vtl_dict_create(), "1 -77; 1 -77; 1 -77; 1 -77/-77; {}"},
    };
    for (const auto& [made, results] : rows) {
        const Value owner(made);
        EXPECT_EQ(conversions(made), results);
        char untouched = '~';
        EXPECT_EACH(0, vtl_value_get(made, 12, &untouched, nullptr), untouched - '~');
        for (const unsigned target : {2U, 7U, 8U, 9U, 10U, 11U}) {
            const void* out = &out;
            const bool possible = target == 8 || made->type == (target == 2 ? 1 : target);
            EXPECT_EQ(vtl_value_get(made, target, &out, nullptr), possible ? 0 : 1);
            EXPECT_EQ(out, !possible ? &out : target < 8 ? made->payload.pointer : made);
        }
    }
}

TEST(Conversion, KeepsTextWithinTheBuffer) {
    const auto eightBytes = [](vtl_value* made, unsigned size) {
        std::string buffer(8, '~');
        EXPECT_EQ(vtl_value_get(Value(made), VTL_TYPE_STRING, buffer.data(), &size), 0);
        std::replace(buffer.begin(), buffer.end(), '\0', '.');
        return buffer;
    };
    EXPECT_EQ(eightBytes(vtl_string_create_from("abc"), 2), "ab~~~~~~");
    EXPECT_EQ(eightBytes(vtl_string_create_from("abc"), 6), "abc...~~");
    EXPECT_EQ(eightBytes(vtl_int_create_from(12345), 0), "~~~~~~~~");
    EXPECT_EQ(eightBytes(vtl_int_create_from(12345), 4), "123.~~~~");
}

TEST(Conversion, StoresWhatItIsGivenAndKeepsTheType) {
    const Value string(vtl_string_create_from("old"));
    const unsigned limit = 3;
    EXPECT_EQ(vtl_value_set(string, VTL_TYPE_STRING, "abcdef", &limit), 0);
    EXPECT_EQ(vtl_value_set(string, VTL_TYPE_STRING, "ghi", nullptr), 1);
    EXPECT_EQ(shown(string), "abc");
    const Value value(vtl_fraction_create());
    const int words[] = {-3, 8};
    EXPECT_EACH(0, vtl_value_set(value, 6, &words[0], &words[1]), value->payload.words[0] + 3,
                value->payload.words[1] - 8, vtl_value_set(value, 4, &words[1], nullptr),
                vtl_value_set(value, 12, "", nullptr), value->payload.words[0] - 8);
    for (const unsigned type : {2U, 7U, 9U, 10U, 11U}) {
        EXPECT_EQ(vtl_value_set(value, type, words, nullptr), 0);
        EXPECT_EQ(std::exchange(value->payload.pointer, nullptr), words);
    }
}

TEST(Comparison, GivesTheBitsOfEveryPair) {
    int object = 0;
    std::vector<Value> values;
    for (vtl_value* value :
         {vtl_int_create_from(3), vtl_int_create_from(INT32_MIN), vtl_bool_create_from(3),
          vtl_double_create_from(3.0000009), vtl_fraction_create_from(3000002, 1000000),
          vtl_string_create_from("3"), vtl_string_create(), vtl_voidptr_create_from(&object),
          vtl_voidptr_create(), vtl_list_create(), vtl_stack_create(), vtl_dict_create()}) {
        values.emplace_back(value);
    }
    const Value blank(vtl_value_alloc());
    // clang-format off
    constexpr unsigned kExpected[7][7] = {
        //        3 min   b 3.0 3/1 "3"  ""
        /*3*/  {  9,  5,  8,  8,  2,  8,  2},
        /*min*/{  3,  9,  2,  2,  2,  2,  2},
        /*b*/  {  8,  4,  9,  8,  2,  2,  2},
        /*3.0*/{  8,  4,  8,  9,  2,  2,  2},
        /*3/1*/{  4,  4,  4,  4,  9,  2,  2},
        /*"3"*/{  8,  2,  2,  2,  2, 41,  3},
        /*""*/ {  2,  2,  2,  2,  2,  3,  9},
    };
    // clang-format on
    for (size_t i = 0; i < values.size(); ++i) {
        const vtl_value* a = values[i];
        for (size_t k = 0; k < values.size(); ++k) {
            const vtl_value* b = values[k];
            // The others refer to something and equal themselves alone, or what holds the same
            // word: a string without text and a null pointer.
            const bool same = a == b || (i == 6 && k == 8) || (i == 8 && k == 6);
            const unsigned reference = (a->type == b->type ? 1U : 0U) | (same ? 32U : 0U);
            EXPECT_EQ(vtl_value_compare(a, b), i < 7 && k < 7 ? kExpected[i][k] : reference)
                << i << " with " << k;
        }
        EXPECT_EQ(vtl_value_compare(a, nullptr) | vtl_value_compare(nullptr, a), 0U);
        EXPECT_EQ(vtl_value_compare(a, blank) | vtl_value_compare(blank, a), i == 8 ? 32U : 0U);
    }
    const Value longest(vtl_double_create_from(-DBL_MAX));
    const Value text(vtl_string_create_from(std::to_string(-DBL_MAX).c_str()));
    const Value other(vtl_string_create_from(text->payload.text));
    EXPECT_EQ(vtl_value_compare(longest, text), 8U);
    EXPECT_EQ(vtl_value_compare(other, text), 9U);
}

}  // namespace

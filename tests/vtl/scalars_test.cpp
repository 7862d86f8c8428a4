#include "vtl/scalars.h"

#include <climits>
#include <cstring>

#include "tests/vtl/values.h"
#include "vtl/list.h"
#include "vtl/string.h"

namespace {

TEST(Scalars, FillTheirTablesCopyAndDump) {
    int object = 0;
    char pointerText[40];
    std::snprintf(pointerText, sizeof pointerText, "0 vtl_voidptr:%p\n", &object);
    const struct {
        vtl_value* made;
        unsigned type;
        unsigned size;
        std::string dump;
        int (*namedDump)(const vtl_value*);
    } cases[] = {
        {vtl_string_create_from("text"), 1, 4, "0 vtl_string:text\n", vtl_string_dump},
        {vtl_string_create_from(""), 1, 0, "0 vtl_string:\n", vtl_string_dump},
        {vtl_string_create_from(nullptr), 1, UINT_MAX, "1 ", vtl_string_dump},
        {vtl_int_create_from(-7), 3, 1, "0 vtl_int:-7\n", vtl_int_dump},
        {vtl_bool_create_from(2), 4, 1, "0 vtl_bool:true\n", vtl_bool_dump},
        {vtl_bool_create_from(0), 4, 1, "0 vtl_bool:false\n", vtl_bool_dump},
        {vtl_double_create_from(2.5), 5, 1, "0 vtl_double:2.500000\n", vtl_double_dump},
        {vtl_fraction_create_from(1, 3), 6, 1, "0 vtl_fraction:1/3\n", vtl_fraction_dump},
        {vtl_voidptr_create_from(&object), 7, 1, pointerText, vtl_voidptr_dump},
    };
    for (const auto& [made, type, size, dump, namedDump] : cases) {
        const Value value(made);
        SCOPED_TRACE(dump);
        EXPECT_EQ(made->type, type);
        unsigned counted = 99;
        EXPECT_EACH(0, vtl_size(made, &counted), made->ops.serialize_json(),
                    made->ops.serialize_xml());
        EXPECT_EQ(counted, size);
        EXPECT_EQ(printed(namedDump, made), dump);
        EXPECT_EQ(printed(vtl_dump, made), type == 4 ? "1 " : dump);
        for (const auto copy : {vtl_copy, vtl_deepcopy}) {
            const Value other(vtl_string_create_from("other"));
            EXPECT_EACH(0, copy(made, other.get()), copy(made, made), vtl_init(other.get()));
            EXPECT_EQ(printed(namedDump, other.get()), dump);
        }
        EXPECT_EACH(0, vtl_clear(made), vtl_deinit(made));
        EXPECT_EQ(printed(namedDump, made), type == VTL_TYPE_STRING ? "1 " : dump);
    }
}

TEST(Scalars, AnswerOneWhenAnIntIsCopiedOverARecordWithoutDeinit) {
    for (vtl_value* made : {vtl_int_create_from(5), vtl_bool_create_from(5)}) {
        const Value source(made);
        const Value blank(vtl_value_alloc());
        EXPECT_EQ(vtl_copy(made, blank.get()), made->type == VTL_TYPE_INT ? 1 : 0);
        EXPECT_EQ(vtl_value_compare(made, blank.get()), 9U);
    }
}

TEST(Scalars, SetAndGet) {
    const Value string(vtl_string_create_from("a longer text"));
    const Value fraction(vtl_fraction_create());
    const Value pointer(vtl_voidptr_create());
    char text[3] = "~~";
    int numerator = 0;
    int denominator = 0;
    double real = 0;
    EXPECT_EACH(0, vtl_string_set(string.get(), "b"), vtl_string_get_copy(string.get(), text, 1),
                vtl_fraction_set(fraction.get(), 4, -6), vtl_double_get(fraction.get(), &real),
                vtl_fraction_get(fraction.get(), &numerator, &denominator),
                vtl_voidptr_set(pointer.get(), text), vtl_clear(string.get()));
    EXPECT_STREQ(text, "b~");
    EXPECT_EACH(true, numerator == 4, denominator == -6, real == 4.0 / -6,
                pointer->payload.pointer == text);
    EXPECT_EACH(1, vtl_voidptr_set(pointer.get(), nullptr),
                vtl_string_get_copy(string.get(), text, 2));
}

TEST(Scalars, LendSevenSlotsToAnotherTable) {
    const Value list(vtl_list_create());
    const Value number(vtl_int_create());
    vtl_value record = *list;
    EXPECT_EQ(vtl_copy_ops(number.get(), &record), 0);
    vtl_operations expected = number->ops;
    expected.init = vtl_list_init;
    expected.deinit = vtl_list_deinit;
    expected.clear = vtl_list_clear;
    EXPECT_EQ(std::memcmp(&record.ops, &expected, sizeof expected), 0);
}

}  // namespace

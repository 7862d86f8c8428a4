#include <cstring>

#include "tests/vtl/values.h"
#include "vtl/list.h"
#include "vtl/scalars.h"
#include "vtl/string.h"

namespace {

TEST(Sequences, PlaceAndRemoveElementsByIndex) {
    for (const unsigned type : {VTL_TYPE_LIST, VTL_TYPE_STACK}) {
        const Value value(vtl_value_create(type, nullptr, nullptr));
        vtl_value* v = value.get();
        const bool list = type == VTL_TYPE_LIST;
        const auto append = list ? vtl_list_append_int : vtl_stack_append_int;
        const auto insert = list ? vtl_list_insert_int : vtl_stack_insert_int;
        const auto element = list ? vtl_list_get_element : vtl_stack_peek;
        const auto remove = list ? vtl_list_remove : vtl_stack_remove;
        EXPECT_EACH(0, append(v, 1), append(v, 2), append(v, 3), insert(v, 1, 4), insert(v, 99, 5),
                    insert(v, -5, 6), insert(v, 6, 7));
        EXPECT_EQ(shown(v), "[6 1 4 2 3 5 7]");
        for (const int index : {2, -1, 4}) {
            vtl_value* removed = nullptr;
            EXPECT_EACH(0, element(v, index, &removed), remove(v, index));
            EXPECT_EQ(list || vtl_destroy(removed) == 0, true) << "a stack hands it out";
        }
        EXPECT_EQ(shown(v), "[1 2 3 5]");
        unsigned size = 0;
        EXPECT_EACH(0, vtl_size(v, &size), vtl_clear(v), append(v, 8));
        EXPECT_EQ(size, 4U);
        EXPECT_EQ(shown(v), "[8]");
        EXPECT_EACH(1, remove(v, 1), element(v, 1, &v));
    }
}

/// What a typed getter gives, as text.
template <typename Key, typename Out>
std::string got(int (*get)(const vtl_value*, Key, Out*), const vtl_value* container,
                std::type_identity_t<Key> key) {
    Out out{};
    if (get(container, key, &out) != 0) {
        return "missing";
    }
    if constexpr (std::is_same_v<Out, vtl_value*>) {
        return shown(out);
    }
    return testing::PrintToString(out);
}

TEST(Sequences, TakeEveryTypeAndConvertIt) {
    const Value list(vtl_list_create());
    const Value stack(vtl_stack_create());
    vtl_value* l = list.get();
    vtl_value* s = stack.get();
    EXPECT_EACH(0, vtl_list_append_double(l, 2.5), vtl_list_append_bool(l, 1),
                vtl_list_append_voidptr(l, s), vtl_list_insert_double(l, -5, 0.5),
                vtl_list_insert_bool(l, 99, 0), vtl_stack_push_bool(s, 1),
                vtl_stack_push_double(s, 2.5), vtl_stack_insert_double(s, 0, 0.5),
                vtl_stack_append(s, VTL_TYPE_VOIDPTR, s), vtl_stack_append_bool(s, 0),
                vtl_stack_insert_bool(s, 9, 1), vtl_stack_append_double(s, 7));
    EXPECT_EQ(shown(l), "[0.500000 2.500000 true - false]");
    EXPECT_EQ(shown(s), "[0.500000 2.500000 true - false true 7.000000]");
    EXPECT_EQ(got(vtl_list_get_double, l, 1) + got(vtl_stack_get_double, s, 1), "2.52.5");
    EXPECT_EQ(got(vtl_list_get_bool, l, 0) + got(vtl_stack_get_bool, s, 0), "11");
    EXPECT_EQ(got(vtl_list_get_voidptr, l, 3), got(vtl_stack_get_voidptr, s, 3));
    EXPECT_EQ(got(vtl_list_get_any, l, 4) + got(vtl_stack_get_any, s, 6), "false7.000000");
    EXPECT_EQ(got(vtl_list_get_double, l, 3), "0") << "it is there, though no number";
    char text[9];
    EXPECT_EACH(0, vtl_list_get_string(l, 2, text, 9), strcmp(text, "true"),
                vtl_stack_get_string(s, 0, text, 9), strcmp(text, "0.500000"));
}

TEST(Stack, HandsOutWhatItPopsAndPrintsWhatItHolds) {
    const Value stack(vtl_stack_create());
    vtl_value* s = stack.get();
    vtl_stack_append(s, VTL_TYPE_STRING, std::string(100, 'x').c_str());
    vtl_stack_append(s, VTL_TYPE_LIST, nullptr);
    vtl_stack_push_int(s, 3);
    EXPECT_EQ(printed(vtl_stack_dump, s), "0 0: 3\n1: " + std::string(74, 'x') + "\n2: \n");
    unsigned lengths[] = {77, 77};
    EXPECT_EACH(0, vtl_stack_text_length(s, 0, &lengths[0]),
                vtl_stack_text_length(s, 1, &lengths[1]));
    EXPECT_THAT(lengths, testing::ElementsAre(77, 100));

    vtl_value* top = nullptr;
    int number = 0;
    EXPECT_EACH(0, vtl_stack_peek(s, 0, &top), vtl_stack_pop(s, VTL_TYPE_INT, &number, nullptr),
                vtl_destroy(top), vtl_stack_pop(s, VTL_TYPE_ANY, &top, nullptr), vtl_destroy(top),
                vtl_stack_pop(s, VTL_TYPE_ANY, &top, nullptr), vtl_destroy(top));
    EXPECT_EQ(number, 3);
    EXPECT_EACH(1, vtl_stack_pop(s, VTL_TYPE_ANY, &top, nullptr),
                vtl_stack_text_length(s, 0, lengths));
    EXPECT_EACH(0, vtl_stack_push_int(s, 4), vtl_stack_peek(s, 0, &top), vtl_deinit(s));
    EXPECT_EQ(shown(top), "4") << "deinit lets go of the elements";
    vtl_destroy(top);
}

TEST(Dict, KeepsItsOrderAndOneValueAKey) {
    const Value dict(vtl_dict_create());
    const Value list(vtl_list_create());
    const Value stack(vtl_stack_create());
    vtl_value* d = dict.get();
    constexpr unsigned kKey = VTL_TYPE_STRING;
    EXPECT_EACH(0, vtl_dict_set_int(d, "a", 1), vtl_dict_set_string(d, "b", "text"),
                vtl_dict_set_bool(d, "c", 1), vtl_dict_set_voidptr(d, "p", d),
                vtl_dict_set_double(d, "a", 2.5), vtl_dict_set(d, kKey, "d", VTL_TYPE_DICT, d),
                vtl_dict_set(d, kKey, "l", VTL_TYPE_LIST, list.get()),
                vtl_dict_set(d, kKey, "s", VTL_TYPE_STACK, stack.get()));
    EXPECT_EQ(shown(d),
              "{a=2.500000 b=text c=true p=- d={a=2.500000 b=text c=true p=-} l=[] s=[]}");
    EXPECT_EQ(got(vtl_dict_get_double, d, "a") + got(vtl_dict_get_int, d, "a"), "2.53");
    EXPECT_EQ(got(vtl_dict_get_bool, d, "a") + got(vtl_dict_get_any, d, "b"), "1text");
    EXPECT_EQ(got(vtl_dict_get_stack, d, "s") + got(vtl_dict_get_list, d, "l"), "[][]");
    EXPECT_EQ(got(vtl_dict_get_stack, d, "l") + got(vtl_dict_get_int, d, "z"), "-missing");
    EXPECT_EQ(got(vtl_dict_get_dict, d, "d"), "{a=2.500000 b=text c=true p=-}");
    EXPECT_EQ(got(vtl_dict_get_voidptr, d, "p"), testing::PrintToString<void*>(d));
    char text[8];
    unsigned type = 0;
    EXPECT_EACH(0, vtl_dict_get_string(d, "b", text, 8), strcmp(text, "text"),
                vtl_dict_get_type(d, kKey, "s", &type), type == VTL_TYPE_STACK ? 0 : 1);

    for (const char* key : {"d", "l", "p", "s"}) {
        EXPECT_EQ(vtl_dict_remove(d, kKey, key), 0);
    }
    EXPECT_EACH(1, vtl_dict_remove(d, kKey, "l"), vtl_dict_set(d, kKey, "b", 12, "no type"),
                vtl_dict_get_type(d, kKey, "b", &type));
    EXPECT_EACH(0, vtl_dict_set(d, kKey, "h", 12, "no type"), vtl_dict_set_int(d, "l", 3));
    EXPECT_EQ(shown(d), "{a=2.500000 b=- c=true l=3}");
    EXPECT_EQ(printed(vtl_dict_dump, d),
              "0 key:vtl_string:a\nvalue:vtl_double:2.500000\nNULL pointer\n"
              "key:vtl_string:c\nvalue:key:vtl_string:l\nvalue:vtl_int:3\n");
    EXPECT_EACH(0, vtl_clear(d), vtl_dict_set_int(d, "k", 1));
    EXPECT_EQ(shown(d), "{k=1}");
}

TEST(Dict, StoresOtherKeysAndNeverFindsThem) {
    const Value dict(vtl_dict_create());
    vtl_value* d = dict.get();
    const int five = 5;
    const auto* key = reinterpret_cast<const char*>(&five);
    EXPECT_EACH(0, vtl_dict_set(d, VTL_TYPE_INT, key, VTL_TYPE_INT, &five),
                vtl_dict_set(d, VTL_TYPE_INT, key, VTL_TYPE_INT, &five),
                vtl_dict_set_int(d, "a", 1));
    EXPECT_EQ(shown(d), "{5=5 5=5 a=1}");
    int out = 77;
    EXPECT_EACH(1, vtl_dict_get(d, VTL_TYPE_INT, key, VTL_TYPE_INT, &out, nullptr), out == 77);
    EXPECT_EQ(got(vtl_dict_get_int, d, "5") + got(vtl_dict_get_int, d, "a"), "missing1");
    for (vtl_value* present : {vtl_int_create_from(5), vtl_string_create_from("a")}) {
        EXPECT_EQ(vtl_dict_has_key(d, VTL_TYPE_STRING, Value(present).get()), 1);
    }
    EXPECT_EQ(vtl_dict_has_key(d, VTL_TYPE_STRING, Value(vtl_int_create_from(6)).get()), 0);
}

TEST(Copies, ShareTheChainWhenShallowAndNothingWhenDeep) {
    for (const unsigned type : {VTL_TYPE_DICT, VTL_TYPE_LIST, VTL_TYPE_STACK}) {
        const auto add = [type](vtl_value* value, const char* key) {
            return type == VTL_TYPE_DICT   ? vtl_dict_set_int(value, key, 1)
                   : type == VTL_TYPE_LIST ? vtl_list_append_int(value, 1)
                                           : vtl_stack_push_int(value, 1);
        };
        const Value owners[] = {Value(vtl_value_create(type, nullptr, nullptr)),
                                Value(vtl_value_create(type, nullptr, nullptr))};
        vtl_value* const source = owners[0].get();
        vtl_value* const deep = owners[1].get();
        vtl_value* shallow = vtl_value_create(type, nullptr, nullptr);
        EXPECT_EACH(0, add(source, "a"), vtl_deepcopy(source, deep), vtl_copy(source, shallow),
                    vtl_copy(source, shallow), vtl_copy(source, source), add(shallow, "b"));
        EXPECT_EACH(1, vtl_deepcopy(source, shallow), vtl_deepcopy(source, source))
            << "the deinit of the destination would end the source";
        EXPECT_EQ(vtl_value_compare(source, shallow), 33U);
        EXPECT_EQ(shown(source), type == VTL_TYPE_DICT ? "{a=1 b=1}" : "[1 1]");
        EXPECT_EQ(shown(deep), type == VTL_TYPE_DICT ? "{a=1}" : "[1]");
        if (type == VTL_TYPE_DICT) {
            EXPECT_EACH(0, static_cast<int>(shallow->owns), vtl_deinit(shallow));
            EXPECT_EQ(vtl_value_compare(source, shallow), 33U) << "nothing changed";
            EXPECT_EACH(0, vtl_copy(deep, shallow), vtl_init(shallow), add(shallow, "c"),
                        vtl_deinit(shallow));
        }
        vtl_free(shallow);
    }
}

/// A list in a dict in a list, so many times, built from the outside in.
Value nest(int times) {
    Value outermost(vtl_list_create());
    vtl_value* inner = outermost.get();
    const Value empty(vtl_list_create());
    for (int i = 0; i < times; ++i) {
        vtl_list_append(inner, VTL_TYPE_DICT, nullptr);
        vtl_list_get_element(inner, 0, &inner);
        vtl_dict_set(inner, VTL_TYPE_STRING, "key", VTL_TYPE_LIST, empty.get());
        vtl_dict_get_list(inner, "key", &inner);
    }
    return outermost;
}

TEST(Nesting, IsReleasedAtAnyDepthAndCopiedToItsLimit) {
    const Value deepest = nest(100000);
    const Value permitted = nest(VTL_NESTING_MAX / 2 - 1);
    const Value tooDeep = nest(VTL_NESTING_MAX / 2);
    const WatchedMemory memory;
    const Value copy(vtl_value_create(VTL_TYPE_ANY, permitted.get(), nullptr));
    EXPECT_NE(copy, nullptr);
    const int live = memory.live();
    EXPECT_EQ(vtl_value_create(VTL_TYPE_ANY, tooDeep.get(), nullptr), nullptr);
    EXPECT_EQ(memory.live(), live);
}

}  // namespace

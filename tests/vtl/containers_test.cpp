#include <algorithm>
#include <random>

#include "tests/vtl/values.h"

namespace {

using Items = std::vector<std::pair<void*, int>>;

Items walked(const vtl_chain* chain) {
    Items items;
    const vtl_chain_node* last = nullptr;
    for (const vtl_chain_node* node = vtl_chain_head(chain); node != nullptr; node = node->next) {
        items.emplace_back(node->item, node->priority);
        EXPECT_EQ(node->previous, last);
        last = node;
    }
    EXPECT_EQ(vtl_chain_tail(chain), last);
    return items;
}

TEST(Chain, FollowsAPlainSequenceThroughRandomOperations) {
    std::mt19937 random(7);
    vtl_chain* chain = vtl_chain_create();
    Items reference;
    char items[5000];
    for (char& item : items) {
        const auto index = static_cast<std::ptrdiff_t>(random() % (reference.size() + 1));
        const auto place = reference.begin() + index;
        const bool atEnd = place == reference.end();
        const int priority = static_cast<int>(random() % 7) - 3;
        vtl_chain_node* position = vtl_chain_head(chain);
        for (std::ptrdiff_t i = 0; i < index; ++i) {
            position = position->next;
        }
        switch (random() % 6) {
            case 0:
                ASSERT_EQ(vtl_chain_insert_item_before(chain, position, &item), 0);
                reference.insert(place, {&item, 0});
                break;
            case 1:
                if (vtl_chain_insert_item_after(chain, position, &item) == 0) {
                    reference.insert(reference.empty() ? place : place + 1, {&item, 0});
                } else {
                    ASSERT_TRUE(atEnd && !reference.empty());
                }
                break;
            case 2:
                ASSERT_EQ(vtl_chain_insert_by_priority(chain, priority, &item), 0);
                reference.insert(std::find_if(reference.begin(), reference.end(),
                                              [=](auto& other) { return other.second < priority; }),
                                 {&item, priority});
                break;
            default:
                ASSERT_EQ(vtl_chain_unlink(chain, position), atEnd ? 1 : 0);
                reference.erase(place, atEnd ? place : place + 1);
        }
        ASSERT_EQ(walked(chain), reference);
    }
    EXPECT_EQ(vtl_chain_destroy(chain), 0);
}

constexpr unsigned kKey = VTL_TYPE_STRING;

TEST(Sequences, RemoveElementsByIndex) {
    for (const unsigned type : {VTL_TYPE_LIST, VTL_TYPE_STACK}) {
        const Value v(vtl_value_create(type, nullptr, nullptr));
        const bool list = type == VTL_TYPE_LIST;
        const auto append = list ? vtl_list_append_int : vtl_stack_append_int;
        const auto element = list ? vtl_list_get_element : vtl_stack_peek;
        const auto remove = list ? vtl_list_remove : vtl_stack_remove;
        EXPECT_EACH(0, append(v, 1), append(v, 2), append(v, 3), append(v, 4), append(v, 5));
        vtl_value* removed = nullptr;
        for (const int index : {1, -1, 2}) {
            EXPECT_EACH(0, element(v, index, &removed), remove(v, index));
            EXPECT_EQ(list || vtl_destroy(removed) == 0, true) << "a stack hands it out";
        }
        EXPECT_EQ(shown(v), "[3 4]");
        unsigned size = 0;
        EXPECT_EACH(0, vtl_size(v, &size), vtl_clear(v), append(v, 8));
        EXPECT_EQ(std::to_string(size) + shown(v), "2[8]");
        EXPECT_EACH(1, remove(v, 1), element(v, 1, &removed));
    }
}

// What a typed getter gives.
template <typename Key, typename Out>
Out got(int (*get)(const vtl_value*, Key, Out*), const vtl_value* from,
        std::type_identity_t<Key> key) {
    Out out{};
    EXPECT_EQ(get(from, key, &out), 0);
    return out;
}

TEST(Containers, StoreAndConvertByTypedForms) {
    const Value l(vtl_list_create());
    const Value s(vtl_stack_create());
    const Value d(vtl_dict_create());
    EXPECT_EACH(0, vtl_dict_set(d, kKey, "s", VTL_TYPE_STACK, s),
                vtl_dict_set_string(d, "t", "text"), vtl_dict_set(d, kKey, "l", VTL_TYPE_LIST, l),
                vtl_dict_set_double(d, "a", 2.5), vtl_dict_set_bool(d, "b", 2),
                vtl_dict_set_int(d, "i", 2), vtl_dict_set_voidptr(d, "p", d));
    EXPECT_EQ(shown(d), "{s=[] t=text l=[] a=2.500000 b=true i=2 p=-}");
    EXPECT_EACH(0, vtl_list_append_double(l, 2.5), vtl_list_append_bool(l, 2),
                vtl_list_append_voidptr(l, d), vtl_list_insert_double(l, -5, 0.5),
                vtl_list_insert_bool(l, 99, 0), vtl_list_insert_int(l, 1, 4));
    EXPECT_EQ(shown(l), "[0.500000 4 2.500000 true - false]");
    EXPECT_EACH(0, vtl_stack_push_bool(s, 2), vtl_stack_push_double(s, 2.5),
                vtl_stack_insert_double(s, -5, 0.5), vtl_stack_append(s, VTL_TYPE_VOIDPTR, d),
                vtl_stack_append_bool(s, 0), vtl_stack_insert_bool(s, 99, 1),
                vtl_stack_insert_int(s, 1, 4), vtl_stack_append_double(s, 7));
    EXPECT_EQ(shown(s), "[0.500000 4 2.500000 true - false true 7.000000]");
    EXPECT_EACH(3, got(vtl_list_get_int, l, 2), got(vtl_stack_get_int, s, 2),
                got(vtl_dict_get_int, d, "a"));
    EXPECT_EACH(1, got(vtl_list_get_bool, l, 2), got(vtl_stack_get_bool, s, 2),
                got(vtl_dict_get_bool, d, "a"));
    EXPECT_EACH(true, got(vtl_list_get_double, l, 2) == 2.5, got(vtl_stack_get_double, s, 2) == 2.5,
                got(vtl_dict_get_double, d, "a") == 2.5, got(vtl_dict_get_double, d, "p") == 0,
                got(vtl_list_get_double, l, 4) == 0, got(vtl_dict_get_stack, d, "l") == nullptr,
                got(vtl_list_get_voidptr, l, 4) == d, got(vtl_stack_get_voidptr, s, 4) == d,
                got(vtl_dict_get_voidptr, d, "p") == d);
    EXPECT_EQ(shown(got(vtl_list_get_any, l, 3)) + shown(got(vtl_stack_get_any, s, 3)) +
                  shown(got(vtl_dict_get_any, d, "t")) + shown(got(vtl_dict_get_stack, d, "s")) +
                  shown(got(vtl_dict_get_list, d, "l")),
              "truetruetext[][]");
    char texts[3][9] = {};
    EXPECT_EACH(0, vtl_list_get_string(l, 2, texts[0], 9), vtl_stack_get_string(s, 2, texts[1], 9),
                vtl_dict_get_string(d, "a", texts[2], 9));
    EXPECT_THAT(texts, testing::Each(testing::StrEq("2.500000")));
}

TEST(Stack, HandsOutWhatItPopsAndPrintsWhatItHolds) {
    const Value s(vtl_stack_create());
    vtl_value* top = nullptr;
    unsigned lengths[] = {77, 77};
    int number = 0;
    EXPECT_EACH(0, vtl_stack_push_int(s, 4), vtl_stack_append(s, VTL_TYPE_LIST, nullptr),
                vtl_stack_push(s, VTL_TYPE_STRING, std::string(100, 'x').c_str()),
                vtl_stack_push_int(s, 3), vtl_stack_text_length(s, 0, &lengths[0]),
                vtl_stack_text_length(s, 1, &lengths[1]));
    EXPECT_THAT(lengths, testing::ElementsAre(77, 100));
    EXPECT_EQ(printed(vtl_stack_dump, s), "0 0: 3\n1: " + std::string(74, 'x') + "\n2: 4\n3: \n");
    EXPECT_EACH(0, vtl_stack_peek(s, 0, &top), vtl_stack_pop(s, VTL_TYPE_INT, &number, nullptr),
                vtl_destroy(top),
                vtl_chain_insert_item_before(s->payload.chain, s->payload.chain->head, nullptr),
                vtl_stack_pop(s, VTL_TYPE_INT, &number, nullptr),
                vtl_stack_pop(s, VTL_TYPE_ANY, &top, nullptr), vtl_destroy(top),
                vtl_stack_pop(s, VTL_TYPE_ANY, &top, nullptr), number - 3);
    EXPECT_EQ(shown(Value(top)), "4");
    EXPECT_EACH(0, vtl_stack_peek(s, 0, &top), vtl_deinit(s));
    EXPECT_EQ(shown(Value(top)), "[]") << "deinit lets go of the elements";
}

TEST(Dict, KeepsItsOrderAndOneValueAKey) {
    const Value d(vtl_dict_create());
    int number = 77;
    unsigned type = 0;
    EXPECT_EACH(0, vtl_dict_set_int(d, "a", 1), vtl_dict_set_string(d, "ab", "text"),
                vtl_dict_set_bool(d, "c", 1), vtl_dict_set_int(d, "d", 3),
                vtl_dict_set_double(d, "a", 2.5), vtl_dict_remove(d, kKey, "d"),
                vtl_dict_get_type(d, kKey, "ab", &type), vtl_dict_set(d, kKey, "h", 12, "no type"),
                vtl_dict_set_int(d, "d", 4));
    EXPECT_EQ(type, VTL_TYPE_STRING);
    EXPECT_EQ(shown(d), "{a=2.500000 ab=text c=true d=4}");
    EXPECT_EACH(1, vtl_dict_remove(d, kKey, "z"), vtl_dict_set(d, kKey, "ab", 12, "no type"),
                vtl_dict_get_type(d, kKey, "ab", &type), vtl_dict_get_int(d, "z", &number));
    EXPECT_EQ(printed(vtl_dict_dump, d),
              "0 key:vtl_string:a\nvalue:vtl_double:2.500000\nNULL pointer\n"
              "key:vtl_string:c\nvalue:key:vtl_string:d\nvalue:vtl_int:4\n");
    EXPECT_EQ(shown(Value(vtl_value_create(VTL_TYPE_ANY, d, nullptr))), "{a=2.500000 c=true d=4}");
    EXPECT_EQ(vtl_clear(d), 0);

    const int five = 5;
    const auto* key = reinterpret_cast<const char*>(&five);
    EXPECT_EACH(0, vtl_dict_set(d, VTL_TYPE_INT, key, VTL_TYPE_INT, &five),
                vtl_dict_set(d, VTL_TYPE_INT, key, VTL_TYPE_INT, &five),
                vtl_dict_set_int(d, "a", 1));
    EXPECT_EQ(shown(d), "{5=5 5=5 a=1}") << "a key that is no string is never found";
    EXPECT_EACH(1, vtl_dict_get(d, VTL_TYPE_INT, "a", VTL_TYPE_INT, &number, nullptr),
                vtl_dict_get_int(d, "5", &number), number == 77,
                vtl_dict_has_key(d, kKey, Value(vtl_int_create_from(5))),
                vtl_dict_has_key(d, kKey, Value(vtl_string_create_from("a"))),
                !vtl_dict_has_key(d, kKey, Value(vtl_int_create_from(6))));
}

TEST(Copies, ShareTheChainWhenShallowAndNothingWhenDeep) {
    const auto add = [](vtl_value* value, const char* key) {
        return vtl_dict_set_int(value, key, 1) * vtl_list_append_int(value, 1) *
               vtl_stack_push_int(value, 1);  // two of them fail
    };
    for (const unsigned type : {VTL_TYPE_DICT, VTL_TYPE_LIST, VTL_TYPE_STACK}) {
        const bool isDict = type == VTL_TYPE_DICT;
        const Value source(vtl_value_create(type, nullptr, nullptr));
        const Value deep(vtl_value_create(type, nullptr, nullptr));
        vtl_value* const shallow = vtl_value_create(type, nullptr, nullptr);
        unsigned size = 0;
        EXPECT_EACH(0, add(source, "a"), vtl_deepcopy(source, deep), vtl_copy(source, shallow),
                    vtl_copy(source, shallow), vtl_copy(source, source), add(shallow, "b"));
        EXPECT_EACH(1, vtl_deepcopy(source, shallow), vtl_deepcopy(source, source))
            << "the deinit of the destination would end the source";
        EXPECT_EQ(shown(source), isDict ? "{a=1 b=1}" : "[1 1]");
        EXPECT_EQ(shown(deep), isDict ? "{a=1}" : "[1]");
        EXPECT_EQ(vtl_value_compare(source, shallow), 33U);
        EXPECT_EQ(vtl_dump(source), type == VTL_TYPE_LIST ? 0 : 1)
            << "the others are not in the table";
        if (isDict) {
            EXPECT_EACH(0, vtl_deinit(shallow), vtl_value_compare(source, shallow) != 33,
                        vtl_init(shallow), add(shallow, "c"), vtl_clear(shallow), vtl_init(shallow),
                        vtl_deinit(shallow), vtl_copy(shallow, deep), vtl_size(source, &size));
            EXPECT_EACH(1, vtl_size(deep, &size), vtl_dict_copy(Value(vtl_list_create()), deep));
        }
        vtl_free(shallow);
    }
}

// A list in a dict in a list, so many times, built from the outside in.
Value nest(int times) {
    Value outermost(vtl_list_create());
    vtl_value* inner = outermost;
    const Value empty(vtl_list_create());
    for (int i = 0; i < times; ++i) {
        vtl_list_append(inner, VTL_TYPE_DICT, nullptr);
        vtl_list_get_element(inner, 0, &inner);
        vtl_dict_set(inner, kKey, "key", VTL_TYPE_LIST, empty);
        vtl_dict_get_list(inner, "key", &inner);
    }
    return outermost;
}

TEST(Nesting, IsReleasedAtAnyDepthAndCopiedToItsLimit) {
    const WatchedMemory memory;
    nest(100000);
    for (const int times : {VTL_NESTING_MAX / 2 - 1, VTL_NESTING_MAX / 2}) {
        const Value copy(vtl_value_create(VTL_TYPE_ANY, nest(times), nullptr));
        EXPECT_EQ(copy == nullptr, times == VTL_NESTING_MAX / 2);
    }
    EXPECT_EQ(memory.sLive, 0);
}

vtl_value* gDict = nullptr;

// A component's destroy slot, which looks into the dict and answers what it likes.
int destroyAndLook(vtl_value* value) {
    unsigned type = 0;
    vtl_dict_get_type(gDict, VTL_TYPE_STRING, "key", &type);
    vtl_free(value);
    return type == 0 ? 7 : static_cast<int>(type);
}

TEST(Containers, LetGoOfWhatIsStillLookedAt) {
    const Value list(vtl_list_create());
    const Value dict(vtl_dict_create());
    gDict = dict;
    vtl_value* element = nullptr;
    vtl_list_append_int(list, 1);
    vtl_list_get_element(list, 0, &element);
    element->ops.destroy = destroyAndLook;
    EXPECT_EACH(0, vtl_list_remove(list, 0),
                vtl_chain_insert_item_after(list->payload.chain, nullptr, nullptr),
                vtl_list_remove(list, 0), vtl_dict_set_int(dict, "key", 1),
                vtl_dict_get_any(dict, "key", &element));
    element->ops.destroy = destroyAndLook;
    EXPECT_EACH(0, vtl_dict_set_int(dict, "key", 2), vtl_dict_get_any(dict, "key", &element));
    element->ops.destroy = destroyAndLook;
    EXPECT_EACH(0, vtl_dict_remove(dict, VTL_TYPE_STRING, "key"));

    const Value text(vtl_string_create_from("itself"));
    unsigned size = 2;
    EXPECT_EACH(0, vtl_string_set(text, text->payload.text + 2),
                vtl_value_set(text, VTL_TYPE_STRING, text->payload.text + 1, &size));
    EXPECT_EQ(shown(text), "el");
    for (const char* expected : {"5", "word"}) {
        vtl_value* whole = vtl_list_create();
        vtl_list_append(whole, VTL_TYPE_STRING, "word");
        vtl_list_insert_int(whole, 0, 5);
        vtl_list_get_element(whole, *expected == '5' ? 0 : 1, &element);
        EXPECT_EQ(vtl_copy(element, whole), 0);
        EXPECT_EQ(shown(whole), expected);
        vtl_destroy(whole);
    }
    int numerator = 0;
    EXPECT_EQ(vtl_value_get_fraction(Value(vtl_fraction_create_from(3, 4)), &numerator), 0);
    EXPECT_EQ(numerator, 3);

    const WatchedMemory memory;
    WatchedMemory::sUntilFailure = 0;
    EXPECT_EACH(1, vtl_list_append_int(text, 1), vtl_list_insert_int(text, 0, 1));
    EXPECT_EQ(vtl_dict_set(dict, 99, "key", VTL_TYPE_LIST, list), 0);
    EXPECT_EQ(WatchedMemory::sUntilFailure, 0) << "nothing is made that has no place";
}

}  // namespace

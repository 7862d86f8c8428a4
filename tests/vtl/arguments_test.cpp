#include <algorithm>

#include "tests/vtl/values.h"
#include "vtl/list.h"
#include "vtl/scalars.h"
#include "vtl/string.h"

namespace {

TEST(Arguments, EveryNullAndEveryWrongTypeGivesOne) {
    vtl_value* const values[] = {vtl_list_create(), vtl_stack_create(),
                                 vtl_dict_create(), vtl_int_create_from(7),
                                 vtl_value_alloc(), vtl_string_create_from("text")};
    const auto [l, s, d, n, b, t] = values;
    vtl_chain* chain = l->payload.chain;
    vtl_value* const null = nullptr;
    vtl_list_append_int(l, 1);
    vtl_stack_push_int(s, 1);
    vtl_dict_set_int(d, "k", 1);
    int i = 0;
    unsigned u = 0;
    double r = 0;
    char c[9];
    char* p = c;
    void* v = c;
    vtl_value* e = nullptr;
    for (vtl_value* empty : {null, b}) {  // the other one has a record, but no operations
        EXPECT_EACH(1, vtl_init(empty), vtl_deinit(empty), vtl_copy(empty, n),
                    vtl_deepcopy(empty, n), vtl_clear(empty), vtl_size(empty, &u), vtl_dump(empty),
                    vtl_destroy(empty));
    }
    EXPECT_EACH(1, vtl_copy(n, null), vtl_deepcopy(n, null), vtl_size(n, nullptr),
                vtl_copy_ops(null, n), vtl_copy_ops(n, null), vtl_value_reset(null),
                vtl_mem_set_interface(nullptr), vtl_value_set(null, 3, &i, nullptr),
                vtl_value_set(n, 3, nullptr, nullptr), vtl_value_set(n, 6, &i, nullptr),
                vtl_value_get(null, 3, &i, nullptr), vtl_value_get(n, 12, nullptr, nullptr),
                vtl_value_get_string(t, c), vtl_value_get_fraction(n, &i),
                vtl_value_get_text(n, &p), vtl_value_get_any(null, &e),
                vtl_value_get_voidptr(n, &v), vtl_value_get_dict(l, &e), vtl_value_get_list(s, &e),
                vtl_value_get_stack(d, &e));
    EXPECT_EACH(0, vtl_value_get_text(t, &p), vtl_value_get_any(t, &e), vtl_value_get_dict(d, &e),
                vtl_value_get_list(l, &e), vtl_value_get_stack(s, &e));
    EXPECT_EACH(1, vtl_string_set(t, nullptr), vtl_string_set(n, "a"), vtl_string_get(null, &p),
                vtl_string_get(t, nullptr), vtl_string_get_copy(n, c, 9), vtl_string_init(null),
                vtl_string_get_copy(t, nullptr, 9), vtl_string_deinit(null), vtl_string_size(n, &u),
                vtl_string_size(t, nullptr), vtl_string_copy(n, t), vtl_string_copy(t, null),
                vtl_string_dump(n), vtl_string_destroy(null), vtl_string_destroy(n),
                vtl_int_set(t, 1), vtl_int_get(n, nullptr), vtl_int_get(t, &i), vtl_int_init(null),
                vtl_int_copy(t, n), vtl_int_dump(null), vtl_int_destroy(null), vtl_bool_set(n, 1),
                vtl_bool_get(n, &i), vtl_bool_copy(n, t), vtl_double_set(t, 1),
                vtl_double_get(l, &r), vtl_fraction_set(t, 1, 2), vtl_fraction_get(n, &i, &i),
                vtl_voidptr_set(t, c), vtl_voidptr_copy(n, t));
    EXPECT_EACH(1, vtl_chain_reset(nullptr), vtl_chain_destroy(nullptr), !vtl_chain_head(nullptr),
                vtl_chain_count(nullptr, &u), vtl_chain_count(chain, nullptr),
                vtl_chain_insert_before(nullptr, nullptr, chain->head),
                vtl_chain_insert_before(chain, nullptr, nullptr),
                vtl_chain_insert_item_before(nullptr, nullptr, n),
                vtl_chain_insert_item_after(nullptr, nullptr, n),
                vtl_chain_insert_by_priority(nullptr, 1, n), vtl_chain_unlink(nullptr, chain->head),
                vtl_chain_unlink(chain, nullptr));
    EXPECT_EACH(1, vtl_list_init(null), vtl_list_size(s, &u), vtl_list_insert(l, 0, 1, nullptr),
                vtl_list_insert_int(d, 0, 1), vtl_list_append(l, 2, "a"), vtl_list_clear(null),
                vtl_list_append_int(t, 1), vtl_list_get_int(n, 0, &i), vtl_list_remove(null, 0),
                vtl_list_get_int(l, 0, nullptr), vtl_list_deinit(t), vtl_list_destroy(null),
                vtl_list_copy(s, l), vtl_list_copy(l, null), vtl_list_deepcopy(s, l),
                vtl_list_dump(null), vtl_stack_init(null), vtl_stack_push_int(l, 1),
                vtl_stack_get_int(l, 0, &i), vtl_stack_pop(s, 3, nullptr, nullptr),
                vtl_stack_remove(null, 0), vtl_stack_text_length(s, 0, nullptr), vtl_stack_clear(l),
                vtl_stack_deinit(null), vtl_stack_destroy(null), vtl_stack_dump(l),
                vtl_stack_deepcopy(l, s));
    EXPECT_EACH(1, vtl_dict_init(null), vtl_dict_size(d, nullptr), vtl_dict_set_int(l, "a", 1),
                vtl_dict_set_int(d, nullptr, 1), vtl_dict_set_string(d, "a", nullptr),
                vtl_dict_get_int(l, "k", &i), vtl_dict_get_int(d, nullptr, &i),
                vtl_dict_get_int(d, "k", nullptr), vtl_dict_get_type(d, 1, "k", nullptr),
                vtl_dict_remove(d, 1, nullptr), !vtl_dict_has_key(null, 1, t), vtl_dict_clear(l),
                !vtl_dict_has_key(d, 1, null), vtl_dict_deinit(null), vtl_dict_destroy(null),
                vtl_dict_copy(d, l), vtl_dict_copy(l, d), vtl_dict_deepcopy(d, n));
    EXPECT_EQ(shown(l) + shown(s) + shown(d) + shown(n), "[1][1]{k=1}7") << "nothing changed";
    for (const unsigned type : {0U, 1U, 2U, 3U, 4U, 5U, 6U, 8U, 12U}) {
        EXPECT_EQ(vtl_value_create(type, nullptr, nullptr), nullptr) << type;
    }
    EXPECT_EACH(true, !vtl_value_create(6, &i, nullptr), !vtl_value_create(11, l, nullptr));
    EXPECT_EACH(0, vtl_int_deinit(null), vtl_bool_clear(null), vtl_list_serialize_json());
    std::for_each(std::begin(values), std::end(values), EndValue());
}

}  // namespace

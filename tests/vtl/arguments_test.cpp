#include "tests/vtl/values.h"

namespace {

// Makes calls with these arguments; each must answer 1.
template <typename... Arguments>
auto refused(const Arguments&... arguments) {
    return [&](auto... calls) { EXPECT_EACH(1, calls(arguments...)...); };
}

TEST(Arguments, EveryNullAndEveryWrongTypeGivesOne) {
    const Value l(vtl_list_create());
    const Value s(vtl_stack_create());
    const Value d(vtl_dict_create());
    const Value n(vtl_int_create_from(7));
    const Value t(vtl_string_create_from("text"));
    const Value b(vtl_value_alloc());  // no type and no operations
    vtl_list_append_int(l, 1);
    vtl_stack_push_int(s, 1);
    vtl_dict_set_int(d, "k", 1);
    int i = 0;
    unsigned u = 0;
    char c[9];
    char* p = c;
    vtl_value* e = nullptr;
    const auto null = nullptr;
    for (vtl_value* other : std::initializer_list<vtl_value*>{null, b, t}) {
        refused(other)(vtl_int_dump, vtl_bool_dump, vtl_double_dump, vtl_fraction_dump,
                       vtl_voidptr_dump, vtl_list_dump, vtl_list_clear, vtl_list_deinit,
                       vtl_stack_dump, vtl_stack_clear, vtl_stack_deinit, vtl_dict_dump,
                       vtl_dict_clear, vtl_dict_deinit);
        refused(other, d)(vtl_int_copy, vtl_bool_copy, vtl_double_copy, vtl_fraction_copy,
                          vtl_voidptr_copy, vtl_list_copy, vtl_list_deepcopy, vtl_stack_copy,
                          vtl_stack_deepcopy, vtl_dict_copy, vtl_dict_deepcopy);
        refused(other, 1)(vtl_int_set, vtl_bool_set, vtl_double_set, vtl_list_append_int,
                          vtl_list_remove, vtl_stack_remove);
        refused(other, &u)(vtl_list_size, vtl_stack_size, vtl_dict_size);
        EXPECT_EACH(1, vtl_int_get(other, &i), vtl_bool_get(other, &i), vtl_voidptr_set(other, c),
                    vtl_fraction_set(other, 1, 2), vtl_fraction_get(other, &i, &i),
                    vtl_list_get_int(other, 0, &i), vtl_dict_set_int(other, "a", 1),
                    vtl_dict_remove(other, 1, "k"), !vtl_dict_has_key(other, 1, t));
    }
    for (vtl_value* empty : std::initializer_list<vtl_value*>{null, b}) {
        refused(empty)(vtl_init, vtl_deinit, vtl_clear, vtl_dump, vtl_destroy, vtl_string_dump);
        refused(empty, n)(vtl_copy, vtl_deepcopy);
    }
    refused(null)(vtl_value_reset, vtl_string_init, vtl_string_deinit, vtl_string_destroy,
                  vtl_int_init, vtl_int_destroy, vtl_list_init, vtl_list_destroy, vtl_stack_init,
                  vtl_stack_destroy, vtl_dict_init, vtl_dict_destroy, vtl_chain_reset,
                  vtl_chain_destroy, vtl_mem_set_interface);
    refused(null, null)(vtl_chain_count, vtl_chain_unlink, vtl_copy_ops, vtl_value_get_any);
    refused(null, null, null)(vtl_chain_insert_before, vtl_chain_insert_item_before,
                              vtl_chain_insert_item_after);
    refused(l->payload.chain, null)(vtl_chain_count, vtl_chain_unlink);
    refused(n, null)(vtl_copy, vtl_deepcopy, vtl_size, vtl_copy_ops, vtl_int_get, vtl_int_copy);
    refused(t, null)(vtl_string_set, vtl_string_get, vtl_string_size, vtl_string_copy);
    refused(l, null)(vtl_list_size, vtl_list_copy, vtl_list_deepcopy);
    refused(d, null)(vtl_dict_size, vtl_dict_copy, vtl_dict_deepcopy);
    refused(d, n)(vtl_dict_copy, vtl_dict_deepcopy);
    EXPECT_EACH(1, vtl_string_set(n, "a"), vtl_string_get(n, &p), vtl_string_get_copy(n, c, 9),
                vtl_string_get_copy(t, null, 9), vtl_string_size(n, &u), vtl_string_copy(n, t),
                vtl_string_dump(n), vtl_string_destroy(n), vtl_value_set(null, 3, &i, null),
                vtl_value_set(n, 3, null, null), vtl_value_set(n, 6, &i, null),
                vtl_value_get(n, 12, null, null), vtl_value_get_string(t, c),
                vtl_value_get_fraction(n, nullptr), vtl_value_get_text(n, &p),
                vtl_value_get_dict(l, &e), vtl_value_get_list(s, &e), vtl_value_get_stack(d, &e),
                vtl_list_get_int(l, 0, null), vtl_list_insert(l, 0, 1, null),
                vtl_stack_text_length(s, 0, null), vtl_dict_set_int(d, null, 1),
                vtl_dict_set_string(d, "a", null), vtl_dict_get_int(d, null, &i),
                vtl_dict_get_int(d, "k", null), vtl_dict_get_type(d, 1, "k", null),
                vtl_dict_remove(d, 1, null), !vtl_dict_has_key(d, 1, null),
                vtl_chain_insert_by_priority(null, 1, n),
                vtl_chain_insert_before(l->payload.chain, null, null), !vtl_chain_head(null));
    EXPECT_EQ(shown(l) + shown(s) + shown(d) + shown(n) + shown(t), "[1][1]{k=1}7text");
    EXPECT_EACH(0, vtl_value_get_text(t, &p), vtl_value_get_any(t, &e), vtl_value_get_dict(d, &e),
                vtl_value_get_list(l, &e), vtl_value_get_stack(s, &e), vtl_int_deinit(null),
                vtl_bool_clear(null), vtl_list_serialize_json(), vtl_list_serialize_xml(),
                vtl_dict_serialize_json(), vtl_dict_serialize_xml(), vtl_stack_serialize_json(),
                vtl_stack_serialize_xml());
    for (const unsigned type : {0U, 1U, 2U, 3U, 4U, 5U, 6U, 8U, 12U}) {
        EXPECT_EQ(vtl_value_create(type, null, null), null) << type;
    }
    EXPECT_EACH(1, !vtl_value_create(6, &i, null), !vtl_value_create(11, l, null));
}

}  // namespace

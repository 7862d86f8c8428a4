// A C11 component: builds, nests, converts and releases values through the public headers.
#undef NDEBUG
#include <assert.h>

#include <mediacheckd/vtl/dict.h>
#include <mediacheckd/vtl/list.h>
#include <mediacheckd/vtl/memory.h>
#include <mediacheckd/vtl/scalars.h>
#include <mediacheckd/vtl/stack.h>
#include <mediacheckd/vtl/string.h>

int main(void) {
    vtl_value* dict = vtl_dict_create();
    vtl_value* list = vtl_list_create();
    vtl_value* fraction = vtl_fraction_create_from(7, 2);
    vtl_value* inner = NULL;
    assert(vtl_list_append(list, VTL_TYPE_ANY, fraction) == 0);
    assert(vtl_dict_set(dict, VTL_TYPE_STRING, "list", VTL_TYPE_LIST, list) == 0);
    assert(vtl_dict_get_list(dict, "list", &inner) == 0 && inner != list);
    assert(vtl_list_get_any(inner, 0, &inner) == 0 && inner->payload.words[1] == 2);
    assert(vtl_value_compare(fraction, inner) == (VTL_COMPARE_SAME_TYPE | VTL_COMPARE_EQUAL));
    vtl_value lent = *list;
    assert(vtl_copy_ops(fraction, &lent) == 0 && lent.ops.copy == vtl_fraction_copy);
    assert(lent.ops.deepcopy == vtl_fraction_deepcopy && lent.ops.size == vtl_fraction_size);
    assert(lent.ops.dump == vtl_fraction_dump && lent.ops.destroy == vtl_fraction_destroy);
    assert(lent.ops.init == vtl_list_init && lent.ops.deinit == vtl_list_deinit &&
           lent.ops.clear == vtl_list_clear);
    assert(fraction->ops.destroy(fraction) == 0 && vtl_destroy(list) == 0);
    assert(vtl_destroy(dict) == 0);
    return 0;
}

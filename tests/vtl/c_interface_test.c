// A C11 component: builds, nests, converts and releases values through the public headers.
#include <stdio.h>

#include "vtl/dict.h"
#include "vtl/list.h"
#include "vtl/memory.h"
#include "vtl/scalars.h"
#include "vtl/stack.h"
#include "vtl/string.h"
#include "vtl/value.h"

static int failures = 0;

#define EXPECT(condition) \
    ((condition) ? (void)0 : (void)(++failures, fprintf(stderr, "not so: %s\n", #condition)))

int main(void) {
    vtl_value* dict = vtl_dict_create();
    vtl_value* list = vtl_list_create();
    vtl_value* inner = NULL;
    int truth = 7;
    EXPECT(vtl_list_append_int(list, 3) == 0 && vtl_list_append(list, VTL_TYPE_STRING, "no") == 0);
    EXPECT(vtl_dict_set(dict, VTL_TYPE_STRING, "list", VTL_TYPE_LIST, list) == 0);
    EXPECT(vtl_dict_get_list(dict, "list", &inner) == 0 && inner != list);
    EXPECT(vtl_list_get_bool(inner, 1, &truth) == 0 && truth == 0);
    EXPECT(vtl_destroy(list) == 0);

    vtl_value* fraction = vtl_fraction_create_from(7, 2);
    EXPECT(fraction->ops.copy(fraction, inner) == 0 && inner->payload.words[1] == 2);
    EXPECT(vtl_value_compare(fraction, inner) == (VTL_COMPARE_SAME_TYPE | VTL_COMPARE_EQUAL));
    EXPECT(vtl_destroy(fraction) == 0 && vtl_destroy(dict) == 0);
    vtl_free_debug(vtl_malloc_debug(8, __FILE__, __LINE__));
    EXPECT(vtl_mem_usage_current() == 0 && vtl_mem_usage_highwater() == 8);
    return failures == 0 ? 0 : 1;
}

#include "vtl/memory.h"

#include <utility>

#include "tests/vtl/values.h"
#include "vtl/list.h"
#include "vtl/scalars.h"
#include "vtl/string.h"

namespace {

int freeBlock(void* block) {
    vtl_free_debug(block);
    return 0;
}

TEST(Accounting, CountsListsAndReportsStrayBlocks) {
    WatchedMemory memory;
    void* stray = vtl_malloc(1);
    EXPECT_EQ(printed(freeBlock, stray),
              "0 error: vtl_mem_debug_list is empty but shoulw not be!\n");
    EXPECT_EQ(memory.live(), 1);
    void* blocks[3];
    for (int i = 0; i < 3; ++i) {
        blocks[i] = vtl_malloc_debug(100, "file.c", i);
    }
    EXPECT_EQ(printed(freeBlock, stray),
              "0 error: can't find memory block in vtl_mem_debug_list!\n");
    EXPECT_EQ(memory.live(), 3);
    EXPECT_EQ(printed(freeBlock, blocks[1]), "0 ");
    EXPECT_EQ(vtl_mem_debug_list->next->previous, vtl_mem_debug_list);
    char expected[200];
    std::snprintf(expected, sizeof expected,
                  "memory usage: 200 (300 highwater)\n     0:      100 %12p file.c:0\n"
                  "     1:      100 %12p file.c:2\n",
                  blocks[0], blocks[2]);
    testing::internal::CaptureStdout();
    vtl_mem_debug_dump();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), expected);
    vtl_free_debug(blocks[0]);
    EXPECT_EQ(vtl_mem_debug_list->previous, nullptr);
    vtl_free_debug(blocks[2]);
    EXPECT_EQ(vtl_mem_debug_list, nullptr);
    EXPECT_EQ(vtl_mem_usage_current(), 0U);
    EXPECT_EQ(vtl_mem_usage_highwater(), 300U);
    memory.failAfter(0);
    EXPECT_EQ(vtl_malloc_debug(1, "file.c", 9), nullptr);
    _vtl_mem_usage_current = 5;
    vtl_mem_usage_reset_current();
    vtl_mem_usage_reset_highwater();
    EXPECT_EQ(_vtl_mem_usage_current + _vtl_mem_usage_highwater, 0U);
}

/// A string, or a container that holds others: "[1 [2] {k=v}]", "[2]" and "{k=v}".
vtl_value* sample(unsigned type) {
    vtl_value* value = vtl_value_create(type, type == VTL_TYPE_STRING ? "abc" : nullptr, nullptr);
    if (type == VTL_TYPE_LIST) {
        vtl_list_append_int(value, 1);
        vtl_list_append(value, VTL_TYPE_ANY, Value(sample(VTL_TYPE_STACK)).get());
        vtl_list_append(value, VTL_TYPE_ANY, Value(sample(VTL_TYPE_DICT)).get());
    }
    vtl_stack_push_int(value, 2);          // fails unless it is a stack
    vtl_dict_set_string(value, "k", "v");  // fails unless it is a dict
    return value;
}

/// Stacks let go of their elements, so that those in lists are cleared first.
void end(vtl_value* value) {
    vtl_value* inner = nullptr;
    for (int i = 0; vtl_list_get_element(value, i, &inner) == 0; ++i) {
        vtl_stack_clear(inner);
    }
    EndValue()(value);
}

vtl_value* sSource = nullptr;  // what the operation under test copies

using Change = int (*)(vtl_value*);

template <auto kCreate>
int creates(vtl_value*) {
    return Value(kCreate()) != nullptr ? 0 : 1;
}

TEST(Faults, EveryChangeFailsWithoutALossAndCanBeRepeated) {
    const Change copy = [](vtl_value* v) { return vtl_deepcopy(sSource, v); };
    const Change append = [](vtl_value* v) { return vtl_list_append(v, VTL_TYPE_ANY, sSource); };
    const Change push = [](vtl_value* v) { return vtl_stack_push(v, VTL_TYPE_DICT, sSource); };
    const Change set = [](vtl_value* v) { return vtl_dict_set(v, 1, "k", 8, sSource); };
    const Change add = [](vtl_value* v) { return vtl_dict_set(v, 1, "l", 8, sSource); };
    struct Case {
        vtl_value* (*make)();
        unsigned source;
        Change change;
        int failure;
        const char* changed;
    };
    std::vector<Case> cases = {
        {vtl_string_create, VTL_TYPE_STRING, copy, 1, "abc"},
        {vtl_list_create, VTL_TYPE_STRING, copy, 1, "abc"},
        {vtl_list_create, VTL_TYPE_LIST, copy, 1, "[1 [2] {k=v}]"},
        {vtl_list_create, VTL_TYPE_STACK, append, 1, "[[2]]"},
        {vtl_stack_create, VTL_TYPE_STACK, copy, 1, "[2]"},
        {vtl_stack_create, VTL_TYPE_DICT, push, 1, "[{k=v}]"},
        {vtl_dict_create, VTL_TYPE_DICT, copy, 1, "{k=v}"},
        {[] { return sample(VTL_TYPE_DICT); }, VTL_TYPE_DICT, set, 1, "{k={k=v}}"},
        {[] { return sample(VTL_TYPE_DICT); }, VTL_TYPE_DICT, add, 0, "{k=v l={k=v}}"},
    };
    for (const Change create :
         {creates<vtl_string_create>, creates<vtl_int_create>, creates<vtl_bool_create>,
          creates<vtl_double_create>, creates<vtl_fraction_create>, creates<vtl_voidptr_create>,
          creates<vtl_list_create>, creates<vtl_stack_create>, creates<vtl_dict_create>,
          creates<[] { return vtl_value_create(VTL_TYPE_STRING, "text", nullptr); }>}) {
        cases.push_back({vtl_int_create, VTL_TYPE_STRING, create, 1, "0"});
        const auto* active = std::exchange(vtl_mem_ifc_active, nullptr);
        EXPECT_EQ(create(nullptr), 1) << "no interface";
        vtl_mem_ifc_active = active;
    }
    for (const auto& [make, source, change, failure, changed] : cases) {
        SCOPED_TRACE(changed);
        WatchedMemory memory;
        bool failed = true;
        for (int attempt = 0; failed; ++attempt) {
            vtl_value* value = make();
            sSource = sample(source);
            memory.failAfter(attempt);
            const int result = change(value);
            failed = memory.failed();
            memory.failAfter(-1);
            EXPECT_TRUE(failed ? result == failure || attempt > 0 : result == 0);
            if (shown(value) != changed) {
                EXPECT_TRUE(failed && result == failure) << attempt;
                unsigned size = 0;
                EXPECT_TRUE(vtl_size(value, &size) == 0 || vtl_init(value) == 0) << "no chain";
                EXPECT_EQ(change(value), 0);
            }
            EXPECT_EQ(shown(value), changed);
            end(value);
            end(sSource);
            ASSERT_EQ(memory.live(), 0) << attempt;
        }
    }
    WatchedMemory memory;
    memory.failAfter(1);
    EXPECT_EQ(shown(Value(vtl_string_create_from("text")).get()), "-") << "a string without text";
    const Value old(vtl_string_create_from("old"));
    memory.failAfter(0);
    EXPECT_EQ(vtl_string_set(old.get(), "new"), 1);
    EXPECT_EQ(shown(old.get()), "-") << "the old text is released first";
}

}  // namespace

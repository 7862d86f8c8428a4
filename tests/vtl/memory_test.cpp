#include "tests/vtl/values.h"

namespace {

TEST(Accounting, CountsListsAndReportsStrayBlocks) {
    WatchedMemory memory;
    void* stray = vtl_malloc(1);
    void* blocks[3];
    testing::internal::CaptureStdout();
    vtl_free_debug(stray);
    for (int i = 0; i < 3; ++i) {
        blocks[i] = vtl_malloc_debug(100, "file.c", i);
    }
    EXPECT_EQ(memory.sLive, 4) << "nothing is released while nothing is listed";
    vtl_free_debug(stray);
    vtl_free_debug(blocks[1]);
    EXPECT_EQ(memory.sLive, 2);
    vtl_mem_debug_dump();
    vtl_free_debug(blocks[2]);
    EXPECT_EQ(vtl_mem_debug_list->block, blocks[0]);
    vtl_free_debug(blocks[0]);
    vtl_mem_debug_dump();
    char expected[300];
    std::snprintf(expected, sizeof expected,
                  "error: vtl_mem_debug_list is empty but shoulw not be!\n"
                  "error: can't find memory block in vtl_mem_debug_list!\n"
                  "memory usage: 200 (300 highwater)\n     0:      100 %12p file.c:0\n"
                  "     1:      100 %12p file.c:2\nmemory usage: 0 (300 highwater)\n",
                  blocks[0], blocks[2]);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), expected);
    memory.sUntilFailure = 0;
    EXPECT_EQ(vtl_malloc_debug(1, "file.c", 9), nullptr);
    EXPECT_EQ(vtl_mem_usage_current() + vtl_mem_usage_highwater(), 300U);
    _vtl_mem_usage_current = 5;
    vtl_mem_usage_reset_current();
    vtl_mem_usage_reset_highwater();
    EXPECT_EQ(_vtl_mem_usage_current + _vtl_mem_usage_highwater, 0U);
}

// A string, or a container that holds others: "[1 [2] {k=v l=w}]", "[2]" and "{k=v l=w}".
vtl_value* sample(unsigned type) {
    vtl_value* value = vtl_value_create(type, type == VTL_TYPE_STRING ? "abc" : nullptr, nullptr);
    if (type == VTL_TYPE_LIST) {
        vtl_list_append_int(value, 1);
        vtl_list_append(value, VTL_TYPE_ANY, Value(sample(VTL_TYPE_STACK)));
        vtl_list_append(value, VTL_TYPE_ANY, Value(sample(VTL_TYPE_DICT)));
    }
    vtl_stack_push_int(value, 2);          // fails unless it is a stack
    vtl_dict_set_string(value, "k", "v");  // fails unless it is a dict
    vtl_dict_set_string(value, "l", "w");
    return value;
}

TEST(Faults, EveryCreatorFailsWithoutALoss) {
    WatchedMemory memory;
    for (vtl_value* (*const create)() :
         {vtl_string_create, vtl_int_create, vtl_bool_create, vtl_double_create,
          vtl_fraction_create, vtl_voidptr_create, vtl_list_create, vtl_stack_create,
          vtl_dict_create, +[] { return vtl_value_create(VTL_TYPE_STRING, "text", nullptr); }}) {
        bool failed = true;
        for (int attempt = 0; failed; ++attempt) {
            memory.sUntilFailure = attempt;
            failed = Value(create()) == nullptr;
            EXPECT_EQ(memory.sUntilFailure < 0, failed);
            EXPECT_EQ(memory.sLive, 0);
        }
        const auto* active = std::exchange(vtl_mem_ifc_active, nullptr);
        EXPECT_EQ(create(), nullptr) << "no interface";
        vtl_mem_ifc_active = active;
    }
}

TEST(Faults, EveryChangeFailsWithoutALossAndCanBeRepeated) {
    using Change = int (*)(const vtl_value* source, vtl_value* value);
    const Change append = [](auto* s, auto* v) { return vtl_list_append(v, VTL_TYPE_ANY, s); };
    const Change push = [](auto* s, auto* v) { return vtl_stack_push(v, VTL_TYPE_DICT, s); };
    const Change set = [](auto* s, auto* v) { return vtl_dict_set(v, 1, "k", VTL_TYPE_ANY, s); };
    const Change add = [](auto* s, auto* v) { return vtl_dict_set(v, 1, "m", VTL_TYPE_ANY, s); };
    const Change text = [](auto* s, auto* v) { return vtl_string_set(v, s->payload.text); };
    const std::tuple<unsigned, unsigned, Change, int, const char*> cases[] = {
        {VTL_TYPE_STRING, VTL_TYPE_STRING, text, 1, "abc"},
        {VTL_TYPE_DICT, VTL_TYPE_STRING, vtl_deepcopy, 1, "abc"},
        {VTL_TYPE_DICT, VTL_TYPE_LIST, vtl_deepcopy, 1, "[1 [2] {k=v l=w}]"},
        {VTL_TYPE_DICT, VTL_TYPE_STACK, vtl_deepcopy, 1, "[2]"},
        {VTL_TYPE_DICT, VTL_TYPE_DICT, vtl_deepcopy, 1, "{k=v l=w}"},
        {VTL_TYPE_LIST, VTL_TYPE_STACK, append, 1, "[1 [2] {k=v l=w} [2]]"},
        {VTL_TYPE_STACK, VTL_TYPE_DICT, push, 1, "[{k=v l=w} 2]"},
        {VTL_TYPE_DICT, VTL_TYPE_DICT, set, 1, "{k={k=v l=w} l=w}"},
        {VTL_TYPE_DICT, VTL_TYPE_DICT, add, 0, "{k=v l=w m={k=v l=w}}"},
    };
    for (const auto& [type, from, change, failure, changed] : cases) {
        SCOPED_TRACE(changed);
        WatchedMemory memory;
        bool failed = true;
        for (int attempt = 0; failed; ++attempt) {
            const Value source(sample(from));
            const Value value(sample(type));
            const std::string before = shown(value);
            memory.sUntilFailure = attempt;
            const int result = change(source, value);
            failed = memory.sUntilFailure < 0;
            memory.sUntilFailure = -1;
            const bool done = shown(value) == changed;
            EXPECT_EQ(result, done ? 0 : failure);
            EXPECT_TRUE(done || failed);
            if (!done) {
                EXPECT_THAT(shown(value), testing::AnyOf(before, "-", "[]", "{}", "{k=- l=w}"));
                unsigned size = 0;
                EXPECT_TRUE(vtl_size(value, &size) == 0 || vtl_init(value) == 0) << "no chain";
                EXPECT_EQ(change(source, value), 0);
            }
            EXPECT_EQ(shown(value), changed);
        }
        EXPECT_EQ(memory.sLive, 0);
    }
}

TEST(Copies, TakeNoBlockThatTheyDoNotKeep) {
    const Value source(sample(VTL_TYPE_LIST));
    WatchedMemory memory;
    const Value copy(vtl_value_create(VTL_TYPE_ANY, source, nullptr));
    EXPECT_EQ(-1 - memory.sUntilFailure, memory.sLive);
}

}  // namespace

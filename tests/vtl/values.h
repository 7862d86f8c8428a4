// Values that end with their scope, values as text, and memory that counts and fails on demand.
#pragma once

#include <gmock/gmock.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <mediacheckd/vtl/chain.h>
#include <mediacheckd/vtl/dict.h>
#include <mediacheckd/vtl/list.h>
#include <mediacheckd/vtl/memory.h>
#include <mediacheckd/vtl/scalars.h>
#include <mediacheckd/vtl/stack.h>
#include <mediacheckd/vtl/string.h>

// Makes the calls in order; each must give the result.
#define EXPECT_EACH(result, ...) \
    EXPECT_THAT((std::vector<int>{__VA_ARGS__}), testing::Each(result)) << #__VA_ARGS__

// Stacks let go of their elements: they, and those in a list, are cleared first.
struct EndValue {
    void operator()(vtl_value* value) const {
        vtl_stack_clear(value);
        vtl_value* element = nullptr;
        for (int i = 0; vtl_list_get_element(value, i, &element) == 0; ++i) {
            vtl_stack_clear(element);
        }
        if (vtl_destroy(value) != 0) {
            vtl_free(value);  // a record without a type
        }
    }
};

// Ends with its scope and is passed as the pointer that it holds.
struct Value : std::unique_ptr<vtl_value, EndValue> {
    using std::unique_ptr<vtl_value, EndValue>::unique_ptr;
    operator vtl_value*() const { return get(); }
};

// "[1 two]" for a list or stack, "{key=1}" for a dict, the text of a scalar, "-" for none.
inline std::string shown(const vtl_value* value) {
    if (value == nullptr || value->type < VTL_TYPE_DICT) {
        char text[400] = "";
        unsigned size = sizeof text;
        return vtl_value_get(value, VTL_TYPE_STRING, text, &size) == 0 ? text : "-";
    }
    const bool dict = value->type == VTL_TYPE_DICT;
    std::string all;
    for (const vtl_chain_node* node = vtl_chain_head(value->payload.chain); node != nullptr;
         node = node->next) {
        const auto* entry = static_cast<const vtl_dict_entry*>(node->item);
        all += (all.empty() ? "" : " ") + (dict ? shown(entry->key) + "=" + shown(entry->value)
                                                : shown(static_cast<const vtl_value*>(node->item)));
    }
    return (dict ? "{" : "[") + all + (dict ? "}" : "]");
}

// What a call answers and prints.
template <typename Call>
std::string printed(Call call, vtl_value* value) {
    testing::internal::CaptureStdout();
    const int result = call(value);
    return std::to_string(result) + " " + testing::internal::GetCapturedStdout();
}

// While it lives, the library's memory is counted and can be told to fail.
struct WatchedMemory {
    inline static int sLive = 0;  // blocks that are not released

    // The allocation after this many further ones fails, and only that one; below 0: none.
    inline static int sUntilFailure = -1;

    static void* allocate(size_t size) {
        if (sUntilFailure-- == 0) {
            return nullptr;
        }
        ++sLive;
        return std::malloc(size);
    }
    static void release(void* block) {
        sLive -= block != nullptr ? 1 : 0;
        std::free(block);
    }
    static constexpr vtl_mem_interface kInterface = {allocate, release, std::calloc, std::realloc};

    const vtl_mem_interface* mBefore = vtl_mem_ifc_active;

    WatchedMemory() {
        sUntilFailure = -1;
        vtl_mem_set_interface(&kInterface);
    }
    ~WatchedMemory() { vtl_mem_ifc_active = mBefore; }
};

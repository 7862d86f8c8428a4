#pragma once
// Values that end with their scope, values as text, and memory that counts and fails on demand.

#include <gmock/gmock.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "vtl/chain.h"
#include "vtl/dict.h"
#include "vtl/memory.h"
#include "vtl/stack.h"
#include "vtl/value.h"

/// Makes the calls in order; each must give the result.
#define EXPECT_EACH(result, ...) \
    EXPECT_THAT((std::vector<int>{__VA_ARGS__}), testing::Each(result)) << #__VA_ARGS__

struct EndValue {
    void operator()(vtl_value* value) const {
        vtl_stack_clear(value);  // a stack lets go of its elements; on others this does nothing
        if (vtl_destroy(value) != 0) {
            vtl_free(value);  // a record without a type
        }
    }
};
using Value = std::unique_ptr<vtl_value, EndValue>;

/// "[1 two]" for a list or stack, "{key=1}" for a dict, the text of a scalar, "-" for none.
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

/// What a call answers and prints.
template <typename... Arguments>
std::string printed(int (*call)(Arguments...), std::type_identity_t<Arguments>... arguments) {
    testing::internal::CaptureStdout();
    const int result = call(arguments...);
    return std::to_string(result) + " " + testing::internal::GetCapturedStdout();
}

/// While it lives, the library's memory is counted and can be told to fail.
class WatchedMemory {
  public:
    WatchedMemory() {
        sLive = 0;
        sUntilFailure = -1;
        vtl_mem_set_interface(&kInterface);
    }
    ~WatchedMemory() { vtl_mem_ifc_active = mBefore; }

    /// The allocation after this many further ones fails, and only that one; -1: none.
    static void failAfter(int allocations) { sUntilFailure = allocations; }
    static bool failed() { return sUntilFailure < 0; }
    static int live() { return sLive; }

  private:
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
    static inline int sLive = 0;
    static inline int sUntilFailure = -1;
    const vtl_mem_interface* mBefore = vtl_mem_ifc_active;
};

#include "vtl/chain.h"

#include <algorithm>
#include <random>

#include "tests/vtl/values.h"

namespace {

using Items = std::vector<std::pair<void*, int>>;

Items walked(const vtl_chain_node* node, vtl_chain_node* vtl_chain_node::*direction) {
    Items items;
    for (; node != nullptr; node = node->*direction) {
        items.emplace_back(node->item, node->priority);
    }
    return items;
}

TEST(Chain, FollowsAPlainSequenceThroughRandomOperations) {
    std::mt19937 random(7);
    vtl_chain* chain = vtl_chain_create();
    Items reference;
    char items[5000];
    for (char& item : items) {
        item = static_cast<char>(random() % 7);
        const auto index = static_cast<std::ptrdiff_t>(random() % (reference.size() + 1));
        const auto place = reference.begin() + index;
        const bool atEnd = place == reference.end();
        const int priority = item - 3;
        vtl_chain_node* position = vtl_chain_head(chain);
        for (std::ptrdiff_t i = 0; i < index; ++i) {
            position = position->next;
        }
        switch (random() % 6) {
            case 0:
                ASSERT_EQ(vtl_chain_insert_item_before(chain, position, &item), 0);
                reference.insert(place, {&item, 0});
                break;
            case 2:
                if (vtl_chain_insert_item_after(chain, position, &item) == 0) {
                    reference.insert(place + (atEnd ? 0 : 1), {&item, 0});
                } else {
                    ASSERT_TRUE(atEnd && !reference.empty());
                }
                break;
            case 3:
                ASSERT_EQ(vtl_chain_insert_by_priority(chain, priority, &item), 0);
                reference.insert(std::find_if(reference.begin(), reference.end(),
                                              [=](auto& other) { return other.second < priority; }),
                                 {&item, priority});
                break;
            default:
                ASSERT_EQ(vtl_chain_unlink(chain, position), atEnd ? 1 : 0);
                reference.erase(place, atEnd ? place : place + 1);
        }
        ASSERT_EQ(walked(vtl_chain_head(chain), &vtl_chain_node::next), reference);
        Items backward = walked(vtl_chain_tail(chain), &vtl_chain_node::previous);
        std::reverse(backward.begin(), backward.end());
        ASSERT_EQ(backward, reference);
    }
    EXPECT_EQ(vtl_chain_destroy(chain), 0);
}

}  // namespace

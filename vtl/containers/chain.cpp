#include <mediacheckd/vtl/chain.h>

#include <new>

#include "vtl/values/record.h"
#include <mediacheckd/vtl/memory.h>

namespace {

vtl_chain_node* createNode(void* item, int priority) {
    void* memory = vtl_malloc(sizeof(vtl_chain_node));
    return memory != nullptr ? new (memory) vtl_chain_node{item, priority, nullptr, nullptr}
                             : nullptr;
}

// Links the node between two neighbours, either of which may be missing.
void link(vtl_chain& chain, vtl_chain_node* previous, vtl_chain_node* node, vtl_chain_node* next) {
    node->previous = previous;
    node->next = next;
    (previous != nullptr ? previous->next : chain.head) = node;
    (next != nullptr ? next->previous : chain.tail) = node;
}

}  // namespace

vtl_chain* vtl_chain_create() {
    void* memory = vtl_malloc(sizeof(vtl_chain));
    return memory != nullptr ? new (memory) vtl_chain{} : nullptr;
}

int vtl_chain_reset(vtl_chain* chain) {
    if (chain == nullptr) {
        return 1;
    }
    while (chain->head != nullptr) {
        vtl_chain_unlink(chain, chain->head);
    }
    return 0;
}

int vtl_chain_destroy(vtl_chain* chain) {
    if (vtl_chain_reset(chain) != 0) {
        return 1;
    }
    vtl_free(chain);
    return 0;
}

int vtl_chain_count(const vtl_chain* chain, unsigned* out) {
    if (chain == nullptr || out == nullptr) {
        return 1;
    }
    unsigned count = 0;
    for (const vtl_chain_node* node = chain->head; node != nullptr; node = node->next) {
        ++count;
    }
    return vtl::store<unsigned>(out, count);
}

vtl_chain_node* vtl_chain_head(const vtl_chain* chain) {
    return chain != nullptr ? chain->head : nullptr;
}

vtl_chain_node* vtl_chain_tail(const vtl_chain* chain) {
    return chain != nullptr ? chain->tail : nullptr;
}

int vtl_chain_insert_before(vtl_chain* chain, vtl_chain_node* position, vtl_chain_node* node) {
    if (chain == nullptr || node == nullptr) {
        return 1;
    }
    if (position == nullptr || chain->head == nullptr) {
        link(*chain, chain->tail, node, nullptr);
    } else {
        link(*chain, position->previous, node, position);
    }
    return 0;
}

int vtl_chain_insert_item_before(vtl_chain* chain, vtl_chain_node* position, void* item) {
    return chain != nullptr ? vtl_chain_insert_before(chain, position, createNode(item, 0)) : 1;
}

int vtl_chain_insert_item_after(vtl_chain* chain, vtl_chain_node* position, void* item) {
    if (chain == nullptr || (position == nullptr && chain->head != nullptr)) {
        return 1;
    }
    vtl_chain_node* next = chain->head != nullptr ? position->next : nullptr;
    return vtl_chain_insert_item_before(chain, next, item);
}

int vtl_chain_insert_by_priority(vtl_chain* chain, int priority, void* item) {
    if (chain == nullptr) {
        return 1;
    }
    vtl_chain_node* position = chain->head;
    while (position != nullptr && position->priority >= priority) {
        position = position->next;
    }
    return vtl_chain_insert_before(chain, position, createNode(item, priority));
}

int vtl_chain_unlink(vtl_chain* chain, vtl_chain_node* node) {
    if (chain == nullptr || node == nullptr) {
        return 1;
    }
    (node->previous != nullptr ? node->previous->next : chain->head) = node->next;
    (node->next != nullptr ? node->next->previous : chain->tail) = node->previous;
    vtl_free(node);
    return 0;
}

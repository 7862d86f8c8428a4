#include "vtl/containers/sequence.h"

#include "vtl/containers/clone.h"
#include "vtl/containers/teardown.h"

namespace vtl {
namespace {

// Null past the end. An index below 0 means 0.
vtl_chain_node* nodeAt(const vtl_chain* chain, int index) {
    vtl_chain_node* node = vtl_chain_head(chain);
    while (index > 0 && node != nullptr) {
        node = node->next;
        --index;
    }
    return node;
}

int insertBefore(vtl_chain* chain, vtl_chain_node* position, ValuePtr element) {
    if (element == nullptr || vtl_chain_insert_item_before(chain, position, element.get()) != 0) {
        return 1;
    }
    static_cast<void>(element.release());
    return 0;
}

}  // namespace

int insertElement(vtl_chain* chain, int index, unsigned type, const void* value) {
    if (chain == nullptr) {
        return 1;
    }
    return insertBefore(chain, nodeAt(chain, index),
                        ValuePtr(vtl_value_create(type, value, nullptr)));
}

int appendElement(vtl_chain* chain, unsigned type, const void* value) {
    if (chain == nullptr) {
        return 1;
    }
    return insertBefore(chain, nullptr, ValuePtr(vtl_value_create(type, value, nullptr)));
}

int convertElement(const vtl_chain* chain, int index, unsigned target, void* out, void* extra) {
    const vtl_chain_node* node = nodeAt(chain, index);
    if (node == nullptr || node->item == nullptr || out == nullptr) {
        return 1;
    }
    vtl_value_get(static_cast<const vtl_value*>(node->item), target, out, extra);
    return 0;
}

int takeElement(vtl_chain* chain, int index, vtl_value** element) {
    vtl_chain_node* node = nodeAt(chain, index);
    if (node == nullptr) {
        return 1;
    }
    *element = static_cast<vtl_value*>(node->item);
    return vtl_chain_unlink(chain, node);
}

int clearElements(vtl_chain* chain) {
    if (chain == nullptr) {
        return 1;
    }
    destroyValues(*chain);
    return 0;
}

int appendClone(vtl_chain& chain, const void* value) {
    return value != nullptr
               ? insertBefore(&chain, nullptr, clone(*static_cast<const vtl_value*>(value)))
               : 1;
}

}  // namespace vtl

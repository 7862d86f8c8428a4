#include "vtl/containers/container.h"

namespace vtl {

vtl_chain* chainOf(const vtl_value* value, unsigned type) {
    return isOf(value, type) ? value->payload.chain : nullptr;
}

bool isContainer(const vtl_value& value) {
    return value.type == VTL_TYPE_DICT || value.type == VTL_TYPE_LIST ||
           value.type == VTL_TYPE_STACK;
}

bool hasChain(const vtl_value* value) {
    return value != nullptr && isContainer(*value) && value->payload.chain != nullptr;
}

bool refersTo(const vtl_value* value, const vtl_chain* chain) {
    return hasChain(value) && value->payload.chain == chain;
}

int initContainer(vtl_value* value, unsigned type, const vtl_operations& operations) {
    if (become(value, type, operations) != 0) {
        return 1;
    }
    value->payload.chain = vtl_chain_create();
    return value->payload.chain != nullptr ? 0 : 1;
}

int releaseChain(vtl_value* value, unsigned type) {
    vtl_chain* chain = chainOf(value, type);
    if (chain == nullptr) {
        return 1;
    }
    value->payload.chain = nullptr;
    return vtl_chain_destroy(chain);
}

int shareChain(const vtl_value* source, vtl_value* destination, unsigned type,
               const vtl_operations& operations) {
    vtl_chain* chain = chainOf(source, type);
    if (chain == nullptr || destination == nullptr) {
        return 1;
    }
    if (!refersTo(destination, chain)) {
        vtl_deinit(destination);
        become(destination, type, operations);
        destination->payload.chain = chain;
        destination->owns = 0;
    }
    return 0;
}

int copyItems(const vtl_value* source, vtl_value* destination, unsigned type, Init init,
              int (*appendCopy)(vtl_chain& copies, const void* item),
              void (*destroyItems)(vtl_chain& copies, StackElements elements)) {
    const vtl_chain* items = chainOf(source, type);
    if (items == nullptr || destination == nullptr || refersTo(destination, items)) {
        return 1;
    }
    vtl_deinit(destination);
    init(destination);
    vtl_chain* copies = chainOf(destination, type);
    if (copies == nullptr) {
        return 1;
    }
    for (const vtl_chain_node* node = items->head; node != nullptr; node = node->next) {
        if (appendCopy(*copies, node->item) != 0) {
            destroyItems(*copies, StackElements::kDestroy);
            return 1;
        }
    }
    return 0;
}

}  // namespace vtl

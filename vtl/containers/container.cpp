#include "vtl/containers/container.h"

namespace vtl {

vtl_chain* chainOf(const vtl_value* value, unsigned type) {
    return isOf(value, type) ? value->payload.chain : nullptr;
}

bool hasChain(const vtl_value* value) {
    return value != nullptr && isContainer(*value) && value->payload.chain != nullptr;
}

bool refersTo(const vtl_value* value, const vtl_chain* chain) {
    return hasChain(value) && value->payload.chain == chain;
}

int initContainer(vtl_value* value, const ContainerType& type) {
    if (become(value, type.code, type.operations) != 0) {
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

int shareChain(const vtl_value* source, vtl_value* destination, const ContainerType& type) {
    if (!isOf(source, type.code) || destination == nullptr) {
        return 1;
    }
    vtl_chain* chain = source->payload.chain;
    if (!refersTo(destination, chain)) {
        vtl_deinit(destination);
        become(destination, type.code, type.operations);
        destination->payload.chain = chain;
        destination->owns = 0;
    }
    return 0;
}

int fillContainer(const vtl_value& source, vtl_value& fresh, const ContainerType& type) {
    const vtl_chain* items = chainOf(&source, type.code);
    vtl_chain* copies = chainOf(&fresh, type.code);
    if (items == nullptr || copies == nullptr) {
        return 1;
    }
    for (const vtl_chain_node* node = items->head; node != nullptr; node = node->next) {
        if (type.appendCopy(*copies, node->item) != 0) {
            type.destroyItems(*copies, StackElements::kDestroy);
            return 1;
        }
    }
    return 0;
}

int copyContainer(const vtl_value* source, vtl_value* destination, const ContainerType& type) {
    const vtl_chain* items = chainOf(source, type.code);
    if (items == nullptr || destination == nullptr || refersTo(destination, items)) {
        return 1;
    }
    vtl_deinit(destination);
    type.operations.init(destination);
    return fillContainer(*source, *destination, type);
}

}  // namespace vtl

#include "vtl/container.h"

#include "vtl/record.h"

namespace vtl {

vtl_chain* chainOf(const vtl_value* value, unsigned type) {
    return isOf(value, type) ? value->payload.chain : nullptr;
}

bool hasChain(const vtl_value* value) {
    const bool container =
        isOf(value, VTL_TYPE_DICT) || isOf(value, VTL_TYPE_LIST) || isOf(value, VTL_TYPE_STACK);
    return container && value->payload.chain != nullptr;
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

}  // namespace vtl

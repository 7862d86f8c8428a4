#include "vtl/containers/teardown.h"

#include "vtl/containers/container.h"
#include <mediacheckd/vtl/list.h>
#include <mediacheckd/vtl/memory.h>

namespace vtl {
namespace {

// Takes all nodes off one chain and onto the end of the other.
void moveNodes(vtl_chain& from, vtl_chain& to) {
    if (from.head == nullptr) {
        return;
    }
    from.head->previous = to.tail;
    (to.tail != nullptr ? to.tail->next : to.head) = from.head;
    to.tail = from.tail;
    from = {};
}

void* takeFirst(vtl_chain& chain) {
    void* item = chain.head->item;
    vtl_chain_unlink(&chain, chain.head);
    return item;
}

// Nodes whose items are still to be destroyed.
class Teardown {
  public:
    explicit Teardown(StackElements elements) : mStackElements(elements) {}

    void addValues(vtl_chain& chain) { moveNodes(chain, mValues); }
    void addEntries(vtl_chain& chain) { moveNodes(chain, mEntries); }

    void destroyEntry(vtl_dict_entry* entry) {
        if (entry != nullptr) {
            destroyValue(entry->key);
            destroyValue(entry->value);
            vtl_free(entry);
        }
    }

    void run() {
        while (mValues.head != nullptr || mEntries.head != nullptr) {
            if (mValues.head != nullptr) {
                destroyValue(static_cast<vtl_value*>(takeFirst(mValues)));
            } else {
                destroyEntry(static_cast<vtl_dict_entry*>(takeFirst(mEntries)));
            }
        }
    }

    void destroyValue(vtl_value* value) {
        if (value == nullptr) {
            return;
        }
        takeContents(*value);
        vtl_destroy(value);
    }

  private:
    void takeContents(const vtl_value& value) {
        const auto destroy = value.ops.destroy;
        const bool list = value.type == VTL_TYPE_LIST && destroy == vtl_list_destroy;
        const bool stack =
            value.type == VTL_TYPE_STACK && mStackElements == StackElements::kDestroy;
        const bool dict =
            value.type == VTL_TYPE_DICT && destroy == vtl_dict_destroy && value.owns == 1;
        if ((list || stack) && hasChain(&value)) {
            addValues(*value.payload.chain);
        } else if (dict && hasChain(&value)) {
            addEntries(*value.payload.chain);
        }
    }

    const StackElements mStackElements;
    vtl_chain mValues{};
    vtl_chain mEntries{};
};

}  // namespace

void destroyValues(vtl_chain& values, StackElements elements) {
    Teardown teardown(elements);
    teardown.addValues(values);
    teardown.run();
}

void destroyEntries(vtl_chain& entries, StackElements elements) {
    Teardown teardown(elements);
    teardown.addEntries(entries);
    teardown.run();
}

void destroyEntry(vtl_dict_entry* entry, StackElements elements) {
    Teardown teardown(elements);
    teardown.destroyEntry(entry);
    teardown.run();
}

void destroyUnseen(vtl_value* value) {
    Teardown teardown(StackElements::kDestroy);
    teardown.destroyValue(value);
    teardown.run();
}

}  // namespace vtl

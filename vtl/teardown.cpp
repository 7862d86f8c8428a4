#include "vtl/teardown.h"

#include "vtl/container.h"
#include "vtl/list.h"
#include "vtl/memory.h"

namespace vtl {
namespace {

/// Takes all nodes off one chain and onto the end of the other.
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

/// Nodes whose items are still to be destroyed.
class Teardown {
  public:
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

  private:
    void destroyValue(vtl_value* value) {
        if (value == nullptr) {
            return;
        }
        vtl_chain* list = chainOf(value, VTL_TYPE_LIST);
        vtl_chain* dict = chainOf(value, VTL_TYPE_DICT);
        if (list != nullptr && value->ops.destroy == vtl_list_destroy) {
            addValues(*list);
        } else if (dict != nullptr && value->owns == 1 && value->ops.destroy == vtl_dict_destroy) {
            addEntries(*dict);
        }
        vtl_destroy(value);
    }

    vtl_chain mValues{};
    vtl_chain mEntries{};
};

}  // namespace

void destroyValues(vtl_chain& values) {
    Teardown teardown;
    teardown.addValues(values);
    teardown.run();
}

void destroyEntries(vtl_chain& entries) {
    Teardown teardown;
    teardown.addEntries(entries);
    teardown.run();
}

void destroyEntry(vtl_dict_entry* entry) {
    Teardown teardown;
    teardown.destroyEntry(entry);
    teardown.run();
}

}  // namespace vtl

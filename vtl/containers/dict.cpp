#include <mediacheckd/vtl/dict.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "vtl/containers/clone.h"
#include "vtl/containers/container.h"
#include "vtl/containers/teardown.h"
#include "vtl/values/record.h"
#include <mediacheckd/vtl/memory.h>

namespace {

struct DestroyEntry {
    void operator()(vtl_dict_entry* entry) const {
        vtl::destroyEntry(entry, vtl::StackElements::kDestroy);
    }
};
using EntryPtr = std::unique_ptr<vtl_dict_entry, DestroyEntry>;

vtl_chain* entriesOf(const vtl_value* dict) {
    return vtl::chainOf(dict, VTL_TYPE_DICT);
}

vtl_dict_entry* entryOf(const vtl_chain_node* node) {
    return node != nullptr ? static_cast<vtl_dict_entry*>(node->item) : nullptr;
}

bool hasText(const vtl_value& key, const char* text) {
    return key.type == VTL_TYPE_STRING && key.payload.text != nullptr &&
           std::strcmp(key.payload.text, text) == 0;
}

// Only a text can be searched for. The walk ends at an entry that has no key.
vtl_chain_node* find(const vtl_value* dict, unsigned keyType, const char* key) {
    if (keyType != VTL_TYPE_STRING || key == nullptr) {
        return nullptr;
    }
    vtl_chain_node* node = vtl_chain_head(entriesOf(dict));
    for (; node != nullptr; node = node->next) {
        const vtl_dict_entry* entry = entryOf(node);
        if (entry == nullptr || entry->key == nullptr) {
            return nullptr;
        }
        if (hasText(*entry->key, key)) {
            return node;
        }
    }
    return nullptr;
}

int append(vtl_chain& entries, vtl::ValuePtr key, vtl::ValuePtr value) {
    void* memory =
        key != nullptr && value != nullptr ? vtl_malloc(sizeof(vtl_dict_entry)) : nullptr;
    if (memory == nullptr) {
        return 1;
    }
    EntryPtr entry(new (memory) vtl_dict_entry{key.release(), value.release()});
    if (vtl_chain_insert_item_before(&entries, nullptr, entry.get()) != 0) {
        return 1;
    }
    static_cast<void>(entry.release());
    return 0;
}

// An entry without a key or a value is left out.
int appendClone(vtl_chain& entries, const void* item) {
    const auto* entry = static_cast<const vtl_dict_entry*>(item);
    const bool complete = entry != nullptr && entry->key != nullptr && entry->value != nullptr;
    return complete ? append(entries, vtl::clone(*entry->key), vtl::clone(*entry->value)) : 0;
}

}  // namespace

constinit const vtl::ContainerType vtl::kDictType = {
    .code = VTL_TYPE_DICT,
    .operations =
        {
            vtl_dict_init,
            vtl_dict_deinit,
            vtl_dict_copy,
            vtl_dict_deepcopy,
            vtl_dict_clear,
            vtl_dict_serialize_json,
            vtl_dict_serialize_xml,
            vtl_dict_size,
            nullptr,
            vtl_dict_destroy,
        },
    .appendCopy = appendClone,
    .destroyItems = vtl::destroyEntries,
};

vtl_value* vtl_dict_create() {
    return vtl::create(vtl_dict_init);
}

int vtl_dict_init(vtl_value* value) {
    if (entriesOf(value) != nullptr && value->owns == 1) {
        vtl::releaseChain(value, VTL_TYPE_DICT);
    }
    if (vtl::initContainer(value, vtl::kDictType) != 0) {
        return 1;
    }
    value->owns = 1;
    return 0;
}

int vtl_dict_size(const vtl_value* dict, unsigned* out) {
    return vtl_chain_count(entriesOf(dict), out);
}

int vtl_dict_set(vtl_value* dict, unsigned key_type, const char* key, unsigned type,
                 const void* value) {
    vtl_chain* entries = entriesOf(dict);
    if (entries == nullptr || key == nullptr || value == nullptr) {
        return 1;
    }
    if (vtl_dict_entry* entry = entryOf(find(dict, key_type, key))) {
        // In place before the old one goes, whose destroy slot may look into the dict.
        vtl_value* created = vtl_value_create(type, value, nullptr);
        vtl_destroy(std::exchange(entry->value, created));
        return created != nullptr ? 0 : 1;
    }
    vtl::ValuePtr newKey(vtl_value_create(key_type, key, nullptr));
    if (newKey != nullptr) {
        append(*entries, std::move(newKey), vtl::ValuePtr(vtl_value_create(type, value, nullptr)));
    }
    return 0;
}

int vtl_dict_set_string(vtl_value* dict, const char* key, const char* text) {
    return vtl_dict_set(dict, VTL_TYPE_STRING, key, VTL_TYPE_STRING, text);
}

int vtl_dict_set_int(vtl_value* dict, const char* key, int number) {
    return vtl_dict_set(dict, VTL_TYPE_STRING, key, VTL_TYPE_INT, &number);
}

int vtl_dict_set_bool(vtl_value* dict, const char* key, int truth) {
    return vtl_dict_set(dict, VTL_TYPE_STRING, key, VTL_TYPE_BOOL, &truth);
}

int vtl_dict_set_double(vtl_value* dict, const char* key, double number) {
    return vtl_dict_set(dict, VTL_TYPE_STRING, key, VTL_TYPE_DOUBLE, &number);
}

int vtl_dict_set_voidptr(vtl_value* dict, const char* key, void* pointer) {
    return vtl_dict_set(dict, VTL_TYPE_STRING, key, VTL_TYPE_VOIDPTR, pointer);
}

int vtl_dict_get(const vtl_value* dict, unsigned key_type, const char* key, unsigned target,
                 void* out, void* extra) {
    const vtl_dict_entry* entry = entryOf(find(dict, key_type, key));
    if (entry == nullptr || out == nullptr) {
        return 1;
    }
    vtl_value_get(entry->value, target, out, extra);
    return 0;
}

int vtl_dict_get_string(const vtl_value* dict, const char* key, char* buffer, unsigned size) {
    return vtl_dict_get(dict, VTL_TYPE_STRING, key, VTL_TYPE_STRING, buffer, &size);
}

int vtl_dict_get_int(const vtl_value* dict, const char* key, int* out) {
    return vtl_dict_get(dict, VTL_TYPE_STRING, key, VTL_TYPE_INT, out, nullptr);
}

int vtl_dict_get_bool(const vtl_value* dict, const char* key, int* out) {
    return vtl_dict_get(dict, VTL_TYPE_STRING, key, VTL_TYPE_BOOL, out, nullptr);
}

int vtl_dict_get_double(const vtl_value* dict, const char* key, double* out) {
    return vtl_dict_get(dict, VTL_TYPE_STRING, key, VTL_TYPE_DOUBLE, out, nullptr);
}

int vtl_dict_get_voidptr(const vtl_value* dict, const char* key, void** out) {
    return vtl_dict_get(dict, VTL_TYPE_STRING, key, VTL_TYPE_VOIDPTR, out, nullptr);
}

int vtl_dict_get_any(const vtl_value* dict, const char* key, vtl_value** out) {
    return vtl_dict_get(dict, VTL_TYPE_STRING, key, VTL_TYPE_ANY, out, nullptr);
}

int vtl_dict_get_dict(const vtl_value* dict, const char* key, vtl_value** out) {
    return vtl_dict_get(dict, VTL_TYPE_STRING, key, VTL_TYPE_DICT, out, nullptr);
}

int vtl_dict_get_list(const vtl_value* dict, const char* key, vtl_value** out) {
    return vtl_dict_get(dict, VTL_TYPE_STRING, key, VTL_TYPE_LIST, out, nullptr);
}

int vtl_dict_get_stack(const vtl_value* dict, const char* key, vtl_value** out) {
    return vtl_dict_get(dict, VTL_TYPE_STRING, key, VTL_TYPE_STACK, out, nullptr);
}

int vtl_dict_get_type(const vtl_value* dict, unsigned key_type, const char* key, unsigned* out) {
    const vtl_dict_entry* entry = entryOf(find(dict, key_type, key));
    if (entry == nullptr || entry->value == nullptr || out == nullptr) {
        return 1;
    }
    return vtl::store<unsigned>(out, entry->value->type);
}

int vtl_dict_remove(vtl_value* dict, unsigned key_type, const char* key) {
    vtl_chain_node* node = find(dict, key_type, key);
    vtl_dict_entry* entry = entryOf(node);
    // Unlinked first: a component's destroy slot may look into the dict.
    const int result = vtl_chain_unlink(entriesOf(dict), node);
    vtl::destroyEntry(entry);
    return result;
}

int vtl_dict_has_key(const vtl_value* dict, unsigned, const vtl_value* key) {
    for (const vtl_chain_node* node = vtl_chain_head(entriesOf(dict)); node != nullptr;
         node = node->next) {
        const vtl_dict_entry* entry = entryOf(node);
        if (entry != nullptr && (vtl_value_compare(entry->key, key) & VTL_COMPARE_EQUAL) != 0) {
            return 1;
        }
    }
    return 0;
}

int vtl_dict_clear(vtl_value* dict) {
    vtl_chain* entries = entriesOf(dict);
    if (entries == nullptr) {
        return 1;
    }
    vtl::destroyEntries(*entries);
    return 0;
}

int vtl_dict_deinit(vtl_value* dict) {
    if (!vtl::isOf(dict, VTL_TYPE_DICT)) {
        return 1;
    }
    if (dict->owns != 1) {
        return 0;
    }
    dict->owns = 0;
    vtl_dict_clear(dict);
    return vtl::releaseChain(dict, VTL_TYPE_DICT);
}

int vtl_dict_destroy(vtl_value* dict) {
    vtl_dict_deinit(dict);
    return vtl::release(dict);
}

int vtl_dict_copy(const vtl_value* source, vtl_value* destination) {
    if (!vtl::isOf(destination, VTL_TYPE_DICT)) {
        return 1;
    }
    return vtl::shareChain(source, destination, vtl::kDictType);
}

int vtl_dict_deepcopy(const vtl_value* source, vtl_value* destination) {
    if (!vtl::hasChain(destination)) {
        return 1;
    }
    return vtl::copyContainer(source, destination, vtl::kDictType);
}

int vtl_dict_dump(const vtl_value* dict) {
    const vtl_chain* entries = entriesOf(dict);
    if (entries == nullptr) {
        return 1;
    }
    for (const vtl_chain_node* node = entries->head; node != nullptr; node = node->next) {
        const vtl_dict_entry* entry = entryOf(node);
        if (entry == nullptr || entry->key == nullptr || entry->value == nullptr) {
            std::fputs("NULL pointer\n", stdout);
            continue;
        }
        std::fputs("key:", stdout);
        vtl_dump(entry->key);
        std::fputs("value:", stdout);
        vtl_dump(entry->value);
    }
    return 0;
}

int vtl_dict_serialize_json() {
    return 0;
}

int vtl_dict_serialize_xml() {
    return 0;
}

#include <mediacheckd/vtl/memory.h>

#include <cstdio>
#include <cstdlib>
#include <new>

namespace {

constexpr vtl_mem_interface kCLibrary = {std::malloc, std::free, std::calloc, std::realloc};

vtl_mem_debug_record* findRecord(const void* block) {
    vtl_mem_debug_record* record = vtl_mem_debug_list;
    while (record != nullptr && record->block != block) {
        record = record->next;
    }
    return record;
}

void appendRecord(vtl_mem_debug_record* record) {
    vtl_mem_debug_record** end = &vtl_mem_debug_list;
    while (*end != nullptr) {
        record->previous = *end;
        end = &(*end)->next;
    }
    *end = record;
}

void unlinkRecord(const vtl_mem_debug_record* record) {
    (record->previous != nullptr ? record->previous->next : vtl_mem_debug_list) = record->next;
    if (record->next != nullptr) {
        record->next->previous = record->previous;
    }
}

}  // namespace

const vtl_mem_interface* vtl_mem_ifc_active = &kCLibrary;
// NOLINTBEGIN(bugprone-reserved-identifier): other components know these names
uint32_t _vtl_mem_usage_current = 0;
uint32_t _vtl_mem_usage_highwater = 0;
// NOLINTEND(bugprone-reserved-identifier)
vtl_mem_debug_record* vtl_mem_debug_list = nullptr;

int vtl_mem_set_interface(const vtl_mem_interface* interface) {
    if (interface == nullptr) {
        return 1;
    }
    vtl_mem_ifc_active = interface;
    return 0;
}

void* vtl_malloc(size_t size) {
    return vtl_mem_ifc_active != nullptr ? vtl_mem_ifc_active->allocate(size) : nullptr;
}

void vtl_free(void* pointer) {
    if (vtl_mem_ifc_active != nullptr) {
        vtl_mem_ifc_active->release(pointer);
    }
}

void* vtl_calloc(size_t count, size_t size) {
    return vtl_mem_ifc_active != nullptr ? vtl_mem_ifc_active->allocate_zeroed(count, size)
                                         : nullptr;
}

void* vtl_realloc(void* pointer, size_t size) {
    return vtl_mem_ifc_active != nullptr ? vtl_mem_ifc_active->reallocate(pointer, size) : nullptr;
}

uint32_t vtl_mem_usage_current() {
    return _vtl_mem_usage_current;
}

uint32_t vtl_mem_usage_highwater() {
    return _vtl_mem_usage_highwater;
}

void vtl_mem_usage_reset_current() {
    _vtl_mem_usage_current = 0;
}

void vtl_mem_usage_reset_highwater() {
    _vtl_mem_usage_highwater = 0;
}

void* vtl_malloc_debug(size_t size, const char* file, int line) {
    void* block = vtl_malloc(size);
    if (block == nullptr) {
        return nullptr;
    }
    // Outside the interface, so that accounting never counts or fails by itself.
    void* memory = std::malloc(sizeof(vtl_mem_debug_record));
    _vtl_mem_usage_current += static_cast<uint32_t>(size);
    if (_vtl_mem_usage_current > _vtl_mem_usage_highwater) {
        _vtl_mem_usage_highwater = _vtl_mem_usage_current;
    }
    if (memory != nullptr) {
        appendRecord(new (memory) vtl_mem_debug_record{nullptr, nullptr, block, size, file, line});
    }
    return block;
}

void vtl_free_debug(void* pointer) {
    if (vtl_mem_debug_list == nullptr) {
        std::fputs("error: vtl_mem_debug_list is empty but shoulw not be!\n", stdout);
        return;
    }
    vtl_mem_debug_record* record = findRecord(pointer);
    if (record == nullptr) {
        std::fputs("error: can't find memory block in vtl_mem_debug_list!\n", stdout);
        vtl_free(pointer);
        return;
    }
    _vtl_mem_usage_current -= static_cast<uint32_t>(record->size);
    unlinkRecord(record);
    std::free(record);
    vtl_free(pointer);
}

void vtl_mem_debug_dump() {
    std::printf("memory usage: %lu (%lu highwater)\n",
                static_cast<unsigned long>(_vtl_mem_usage_current),
                static_cast<unsigned long>(_vtl_mem_usage_highwater));
    int index = 0;
    for (const vtl_mem_debug_record* record = vtl_mem_debug_list; record != nullptr;
         record = record->next) {
        std::printf("  %4d: %8lu %12p %s:%d\n", index++, static_cast<unsigned long>(record->size),
                    record->block, record->file, record->line);
    }
}

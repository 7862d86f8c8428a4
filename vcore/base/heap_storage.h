// Storage that the C functions hand out: always from malloc's heap.
#pragma once

#include <cstdlib>

namespace vcore {

// Returns zeroed storage, or null.
template <typename T>
T* newStorage() {
    return static_cast<T*>(calloc(1, sizeof(T)));
}

// Returns 0, or 1 for null.
template <typename T>
int freeStorage(T* storage) {
    if (storage == nullptr) {
        return 1;
    }
    free(storage);
    return 0;
}

// Frees the storage whatever destroy results in. Returns that result, or 1 for null.
template <typename T>
int destroyAndFree(T* storage, int (*destroy)(T*)) {
    if (storage == nullptr) {
        return 1;
    }
    const int result = destroy(storage);
    free(storage);
    return result;
}

}  // namespace vcore

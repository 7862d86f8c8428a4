#include <mediacheckd/vcore/sys_sem.h>

#include <fcntl.h>

#include "vcore/base/heap_storage.h"

static_assert(sizeof(void*) != 4 || sizeof(sys_sem_t) == 3 * 4, "three fields of 32 bits");

namespace {

sys_sem_t* newHandle(sem_t* sem, uint32_t ownsStorage) {
    auto* const handle = vcore::newStorage<sys_sem_t>();
    if (handle != nullptr) {
        handle->sem = sem;
        handle->ownsStorage = ownsStorage;
    }
    return handle;
}

int openFlags(unsigned flags) {
    int result = 0;
    if ((flags & SYS_SEM_CREATE) != 0) {
        result |= O_CREAT;
    }
    if ((flags & SYS_SEM_EXCLUSIVE) != 0) {
        result |= O_EXCL;
    }
    return result;
}

int callUnlessBypassed(sys_sem_t* handle, int (*operation)(sem_t*)) {
    if (handle == nullptr) {
        return 1;
    }
    if (handle->bypass == 1) {
        return 0;
    }
    return handle->sem == nullptr ? 1 : operation(handle->sem);
}

}  // namespace

sys_sem_t* sys_sem_create(int pshared, unsigned value) {
    auto* const sem = vcore::newStorage<sem_t>();
    if (sem == nullptr) {
        return nullptr;
    }
    sys_sem_t* const handle = sem_init(sem, pshared, value) == 0 ? newHandle(sem, 1) : nullptr;
    if (handle == nullptr) {
        free(sem);
    }
    return handle;
}

sys_sem_t* sys_sem_open(const char* name, unsigned flags, mode_t mode, unsigned value) {
    if (name == nullptr) {
        return nullptr;
    }
    sys_sem_t* const handle = newHandle(nullptr, 0);
    if (handle == nullptr) {
        return nullptr;
    }
    handle->sem = sem_open(name, openFlags(flags), mode, value);
    if (handle->sem == SEM_FAILED) {
        free(handle);
        return nullptr;
    }
    return handle;
}

int sys_sem_wait(sys_sem_t* handle) {
    return callUnlessBypassed(handle, sem_wait);
}

int sys_sem_trywait(sys_sem_t* handle) {
    return callUnlessBypassed(handle, sem_trywait);
}

int sys_sem_post(sys_sem_t* handle) {
    return callUnlessBypassed(handle, sem_post);
}

int sys_sem_getvalue(sys_sem_t* handle, int* out) {
    if (handle == nullptr || handle->bypass == 1 || handle->sem == nullptr || out == nullptr) {
        return 1;
    }
    return sem_getvalue(handle->sem, out);
}

int sys_sem_close(sys_sem_t* handle) {
    return handle == nullptr || handle->sem == nullptr ? 1 : sem_close(handle->sem);
}

int sys_sem_free(sys_sem_t* handle) {
    if (handle != nullptr && handle->ownsStorage != 0) {
        free(handle->sem);
    }
    return vcore::freeStorage(handle);
}

#include <mediacheckd/vcore/sys_thread.h>

#include <cstring>

#include "vcore/base/heap_storage.h"

static_assert(PTHREAD_CREATE_JOINABLE == 0 && PTHREAD_CREATE_DETACHED == 1);

sys_thread_t* sys_thread_create(const pthread_attr_t* attr, void* (*start)(void*), void* arg,
                                uint32_t word, const char* name, unsigned /*option*/) {
    if (start == nullptr) {
        return nullptr;
    }
    auto* const handle = vcore::newStorage<sys_thread_t>();
    if (handle == nullptr) {
        return nullptr;
    }
    handle->word = word;
    if (name != nullptr) {
        memcpy(handle->name, name, strnlen(name, sizeof handle->name));
    }
    if (pthread_create(&handle->thread, attr, start, arg) != 0) {
        free(handle);
        return nullptr;
    }
    return handle;
}

void sys_thread_exit(void* result) {
    pthread_exit(result);
}

int sys_thread_free(sys_thread_t* handle) {
    return vcore::freeStorage(handle);
}

int sys_thread_self(pthread_t* out) {
    if (out == nullptr) {
        return 1;
    }
    *out = pthread_self();
    return 0;
}

int sys_thread_equal(const sys_thread_t* a, const sys_thread_t* b) {
    return a == nullptr || b == nullptr || pthread_equal(a->thread, b->thread) != 0;
}

int sys_thread_cancel(sys_thread_t* handle) {
    return handle == nullptr || pthread_cancel(handle->thread) != 0;
}

int sys_thread_detach(sys_thread_t* handle) {
    return handle == nullptr || pthread_detach(handle->thread) != 0;
}

int sys_thread_join(sys_thread_t* handle, void** result) {
    return handle == nullptr || pthread_join(handle->thread, result) != 0;
}

pthread_attr_t* sys_thread_attr_create() {
    return vcore::newStorage<pthread_attr_t>();
}

int sys_thread_attr_init(pthread_attr_t* attr) {
    return attr == nullptr ? 1 : pthread_attr_init(attr);
}

int sys_thread_attr_set_detached(pthread_attr_t* attr, int state) {
    if (attr == nullptr || (state != PTHREAD_CREATE_JOINABLE && state != PTHREAD_CREATE_DETACHED)) {
        return 1;
    }
    return pthread_attr_setdetachstate(attr, state);
}

int sys_thread_attr_destroy(pthread_attr_t* attr) {
    return vcore::destroyAndFree(attr, pthread_attr_destroy);
}

#include <mediacheckd/vcore/sys_mutex.h>

#include "vcore/base/heap_storage.h"

namespace {

int initRecursive(pthread_mutex_t* mutex) {
    pthread_mutexattr_t attr;
    if (const int error = pthread_mutexattr_init(&attr); error != 0) {
        return error;
    }
    pthread_mutexattr_settype(&attr, PTHREAD_MUTEX_RECURSIVE);
    const int result = pthread_mutex_init(mutex, &attr);
    pthread_mutexattr_destroy(&attr);
    return result;
}

}  // namespace

pthread_mutex_t* sys_mutex_create() {
    return vcore::newStorage<pthread_mutex_t>();
}

int sys_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attr) {
    if (mutex == nullptr) {
        return 1;
    }
    return attr == nullptr ? initRecursive(mutex) : pthread_mutex_init(mutex, attr);
}

int sys_mutex_lock(pthread_mutex_t* mutex) {
    return mutex == nullptr ? 1 : pthread_mutex_lock(mutex);
}

int sys_mutex_trylock(pthread_mutex_t* mutex) {
    return mutex == nullptr ? 1 : pthread_mutex_trylock(mutex);
}

int sys_mutex_timedlock(pthread_mutex_t* mutex, const timespec* abstime) {
    if (mutex == nullptr || abstime == nullptr) {
        return 1;
    }
    return pthread_mutex_timedlock(mutex, abstime);
}

int sys_mutex_unlock(pthread_mutex_t* mutex) {
    return mutex == nullptr ? 1 : pthread_mutex_unlock(mutex);
}

int sys_mutex_destroy(pthread_mutex_t* mutex) {
    return vcore::destroyAndFree(mutex, pthread_mutex_destroy);
}

pthread_mutexattr_t* sys_mutexattr_create() {
    return vcore::newStorage<pthread_mutexattr_t>();
}

int sys_mutexattr_init(pthread_mutexattr_t* attr) {
    return attr == nullptr ? 1 : pthread_mutexattr_init(attr);
}

int sys_mutexattr_destroy(pthread_mutexattr_t* attr) {
    return vcore::destroyAndFree(attr, pthread_mutexattr_destroy);
}

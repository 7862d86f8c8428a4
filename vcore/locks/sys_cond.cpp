#include <mediacheckd/vcore/sys_cond.h>

#include <cerrno>

#include "vcore/base/clock.h"
#include "vcore/base/heap_storage.h"

pthread_cond_t* sys_cond_create() {
    return vcore::newStorage<pthread_cond_t>();
}

int sys_cond_init(pthread_cond_t* cond, const pthread_condattr_t* attr) {
    return cond == nullptr ? 1 : pthread_cond_init(cond, attr);
}

int sys_cond_wait(pthread_cond_t* cond, pthread_mutex_t* mutex) {
    if (cond == nullptr || mutex == nullptr) {
        return 1;
    }
    return pthread_cond_wait(cond, mutex);
}

int sys_cond_timedwait(pthread_cond_t* cond, pthread_mutex_t* mutex, const timespec* abstime) {
    if (cond == nullptr || mutex == nullptr || abstime == nullptr) {
        return 1;
    }
    switch (pthread_cond_timedwait(cond, mutex, abstime)) {
        case 0:
            return 0;
        case ETIMEDOUT:
            return SYS_COND_TIMED_OUT;
        default:
            return 1;
    }
}

int sys_cond_timedwait_ms(pthread_cond_t* cond, pthread_mutex_t* mutex, int milliseconds) {
    if (cond == nullptr || mutex == nullptr) {
        return 1;
    }
    const timespec deadline = vcore::deadlineAfter(vcore::realTime(), milliseconds);
    return sys_cond_timedwait(cond, mutex, &deadline);
}

int sys_cond_signal(pthread_cond_t* cond) {
    return cond == nullptr ? 1 : pthread_cond_signal(cond);
}

int sys_cond_broadcast(pthread_cond_t* cond) {
    return cond == nullptr ? 1 : pthread_cond_broadcast(cond);
}

int sys_cond_free(pthread_cond_t* cond) {
    return vcore::freeStorage(cond);
}

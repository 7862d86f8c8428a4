// Mutexes over POSIX threads, their storage on the heap.
//
// Every function that returns int returns 1 when a pointer it needs is null, else the result of the
// POSIX call it wraps: 0 on success, an error number on failure.
#pragma once

#include <pthread.h>
#include <time.h>

#ifdef __cplusplus
extern "C" {
#endif

// Other components find these by name.
#pragma GCC visibility push(default)

// Returns zeroed storage for one mutex, to be released with sys_mutex_destroy, or null.
pthread_mutex_t* sys_mutex_create(void);

// Makes the mutex ready for use. A null attr makes it recursive: a thread that holds it may lock it
// again and unlocks it as many times.
int sys_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attr);

int sys_mutex_lock(pthread_mutex_t* mutex);

// Returns EBUSY when another thread holds the mutex.
int sys_mutex_trylock(pthread_mutex_t* mutex);

// Waits until the absolute time abstime of the real-time clock at most.
// Returns ETIMEDOUT when the mutex did not become free in time.
int sys_mutex_timedlock(pthread_mutex_t* mutex, const struct timespec* abstime);

int sys_mutex_unlock(pthread_mutex_t* mutex);

// Destroys the mutex and releases its storage, whatever the result.
int sys_mutex_destroy(pthread_mutex_t* mutex);

// Returns storage for one attribute, to be released with sys_mutexattr_destroy, or null.
pthread_mutexattr_t* sys_mutexattr_create(void);

int sys_mutexattr_init(pthread_mutexattr_t* attr);

// Destroys the attribute and releases its storage, whatever the result.
int sys_mutexattr_destroy(pthread_mutexattr_t* attr);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif

// Condition variables over POSIX threads, their storage on the heap.
//
// A wait may end with 0 although nobody signalled: callers wait in a loop over what they wait for.
//
// Every function that returns int returns 1 when a pointer it needs is null, else, unless said
// otherwise, the result of the POSIX call it wraps: 0 on success, an error number on failure.
#pragma once

#include <pthread.h>
#include <time.h>

#ifdef __cplusplus
extern "C" {
#endif

// Result of a timed wait that ended without a signal.
#define SYS_COND_TIMED_OUT 100

// Other components find these by name.
#pragma GCC visibility push(default)

// Returns storage for one condition variable, to be released with sys_cond_free, or null.
pthread_cond_t* sys_cond_create(void);

// Makes the condition variable ready for use; attr may be null.
int sys_cond_init(pthread_cond_t* cond, const pthread_condattr_t* attr);

// Waits for a signal with the mutex, which the caller holds, released meanwhile.
int sys_cond_wait(pthread_cond_t* cond, pthread_mutex_t* mutex);

// Waits until the absolute time abstime of the condition variable's clock at most.
// Returns 0 when signalled, SYS_COND_TIMED_OUT, or 1 on any failure.
int sys_cond_timedwait(pthread_cond_t* cond, pthread_mutex_t* mutex,
                       const struct timespec* abstime);

// Waits for milliseconds from now at most, by the real-time clock. Returns as sys_cond_timedwait.
int sys_cond_timedwait_ms(pthread_cond_t* cond, pthread_mutex_t* mutex, int milliseconds);

int sys_cond_signal(pthread_cond_t* cond);
int sys_cond_broadcast(pthread_cond_t* cond);

// Releases the storage; the condition variable is not destroyed. Returns 0.
int sys_cond_free(pthread_cond_t* cond);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif

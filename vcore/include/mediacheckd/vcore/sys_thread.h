// Threads over POSIX threads, behind a handle on the heap.
//
// Every function that returns int returns 1 when a pointer it needs is null, unless said otherwise.
#pragma once

#include <pthread.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define SYS_THREAD_NAME_SIZE 16

typedef struct sys_thread {
    pthread_t thread;
    uint32_t word;                    // the caller's, from sys_thread_create
    char name[SYS_THREAD_NAME_SIZE];  // zero-filled; a name that fills it has no terminator
} sys_thread_t;

// Other components find these by name.
#pragma GCC visibility push(default)

// Starts a thread in start with arg. attr and name may be null; option has no effect.
// Returns the thread's handle, to be released with sys_thread_free, or null.
sys_thread_t* sys_thread_create(const pthread_attr_t* attr, void* (*start)(void*), void* arg,
                                uint32_t word, const char* name, unsigned option);

// Ends the calling thread with a result for sys_thread_join.
void sys_thread_exit(void* result) __attribute__((noreturn));

// Releases the handle; the thread goes on. Returns 0.
int sys_thread_free(sys_thread_t* handle);

// Stores the calling thread's id. Returns 0.
int sys_thread_self(pthread_t* out);

// Returns 1 when both handles are of one thread or either is null, else 0.
int sys_thread_equal(const sys_thread_t* a, const sys_thread_t* b);

// Each returns 0, or 1 when the POSIX call fails. The handle stays.
int sys_thread_cancel(sys_thread_t* handle);
int sys_thread_detach(sys_thread_t* handle);
// result: where the thread's result goes, or null.
int sys_thread_join(sys_thread_t* handle, void** result);

// Returns zeroed storage for one attribute, to be released with sys_thread_attr_destroy, or null.
pthread_attr_t* sys_thread_attr_create(void);

// Returns 0 or an error number.
int sys_thread_attr_init(pthread_attr_t* attr);

// state: 0 joinable, 1 detached. Returns 1 for any other, else 0 or an error number.
int sys_thread_attr_set_detached(pthread_attr_t* attr, int state);

// Destroys the attribute and releases its storage. Returns 0 or an error number.
int sys_thread_attr_destroy(pthread_attr_t* attr);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif

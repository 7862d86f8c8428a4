// Semaphores over POSIX, unnamed and named, behind a handle on the heap.
#pragma once

#include <semaphore.h>
#include <stdint.h>
#include <sys/types.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct sys_sem {
    sem_t* sem;
    uint32_t bypass;       // 0; set to 1, wait, try-wait and post succeed without the semaphore
    uint32_t ownsStorage;  // 1 for an unnamed semaphore, 0 for a named one
} sys_sem_t;

// Flags of sys_sem_open.
#define SYS_SEM_CREATE 0x1U     // create the semaphore if there is none
#define SYS_SEM_EXCLUSIVE 0x2U  // with SYS_SEM_CREATE: fail if there is one

// Other components find these by name.
#pragma GCC visibility push(default)

// Makes an unnamed semaphore. pshared: non-zero to share it between processes.
// Returns its handle, to be released with sys_sem_free, or null.
sys_sem_t* sys_sem_create(int pshared, unsigned value);

// Opens a named semaphore. flags: SYS_SEM_*; mode and value are those of one that it creates.
// Returns its handle, to be closed with sys_sem_close and released with sys_sem_free, or null.
sys_sem_t* sys_sem_open(const char* name, unsigned flags, mode_t mode, unsigned value);

// Each returns 0 on success or when bypassed, 1 without handle or semaphore, else -1 with errno as
// the POSIX call left it.
int sys_sem_wait(sys_sem_t* handle);
int sys_sem_trywait(sys_sem_t* handle);
int sys_sem_post(sys_sem_t* handle);

// Stores the count. Returns 0, or 1 without handle, semaphore or out, or when bypassed.
int sys_sem_getvalue(sys_sem_t* handle, int* out);

// Closes a named semaphore; the handle stays. Returns 0, 1 without handle or semaphore, or -1.
int sys_sem_close(sys_sem_t* handle);

// Releases the handle, and the storage of an unnamed semaphore; destroys and closes nothing.
// Returns 0, or 1 for null.
int sys_sem_free(sys_sem_t* handle);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif

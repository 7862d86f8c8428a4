// Preloaded: the calls by which a program reaches memory, files, sockets, queues, threads and
// clocks. One of them fails, as the plan says, with an error that its manual page lists.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include "tests/faults/fault_plan.h"

namespace {

FaultPlan* sPlan = nullptr;

constexpr uint32_t kInterruptions = 20;  // signals do not come for ever

// A stream that cannot be written stays so.
// Returns the error that the call fails with, or 0.
int errorNow(const char* call, const int* errors, uint32_t count) {
    FaultPlan* const plan = sPlan;
    if (plan == nullptr ||
        (plan->seen == 0 && plan->from[0] != 0 && std::strcmp(plan->from, call) != 0)) {
        return 0;
    }
    const uint32_t place = ++plan->seen;
    if (place == plan->at) {
        std::strncpy(plan->call, call, sizeof plan->call - 1);
        plan->exhausted = plan->error >= count;
    } else if (!(plan->lasting || std::strcmp(call, "fwrite") == 0) || place < plan->at ||
               std::strcmp(call, plan->call) != 0) {
        return 0;
    }
    const int error = plan->exhausted ? 0 : errors[plan->error];
    return error == EINTR && place > plan->at + kInterruptions ? 0 : error;
}

// Before main, so that all that a program does counts.
__attribute__((constructor)) void readPlan() {
    const int file = ::open(kFaultPlanFile, O_RDWR | O_CLOEXEC);
    void* const plan =
        mmap(nullptr, sizeof(FaultPlan), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    sPlan = plan == MAP_FAILED ? nullptr : static_cast<FaultPlan*>(plan);
    close(file);
}

}  // namespace

// A function under its own name for the linker only: the system's declarations differ in detail.
#define DEFINED_AS(name) __asm__(#name) __attribute__((visibility("default"), used))

// Types, parameter lists and statements take no parentheses.
// NOLINTBEGIN(bugprone-macro-parentheses)
#define REAL(result, name, types) reinterpret_cast<result(*) types>(dlsym(RTLD_NEXT, #name))

// onError: what happens instead of the call. real: the call, which onError may make as well.
#define FAULTY(result, name, types, parameters, arguments, onError, ...)      \
    result faulty_##name parameters DEFINED_AS(name);                         \
    result faulty_##name parameters {                                         \
        static result(*const real) types = REAL(result, name, types);         \
        static constexpr int kErrors[] = {__VA_ARGS__};                       \
        if (const int error = errorNow(#name, kErrors, std::size(kErrors))) { \
            onError;                                                          \
        }                                                                     \
        return real arguments;                                                \
    }
#define P0 (), (), ()
#define P1(a) (a), (a x), (x)
#define P2(a, b) (a, b), (a x, b y), (x, y)
#define P3(a, b, c) (a, b, c), (a x, b y, c z), (x, y, z)
#define P4(a, b, c, d) (a, b, c, d), (a x, b y, c z, d w), (x, y, z, w)
#define P5(a, b, c, d, e) (a, b, c, d, e), (a x, b y, c z, d w, e v), (x, y, z, w, v)
#define CALL(result, name, with, onError, ...) \
    EXPANDED(FAULTY, result, name, with, onError, __VA_ARGS__)
#define EXPANDED(macro, ...) macro(__VA_ARGS__)

#define GIVES(value)   \
    {                  \
        errno = error; \
        return value;  \
    }
#define ERROR return error  // as pthread_* do
// What it was to release is gone all the same.
#define ANYWAY(value) \
    real(x);          \
    GIVES(value)
// As ferror tells later.
#define STREAM(stream, value) \
    stream->_flags |= 0x20;   \
    GIVES(value)
// NOLINTEND(bugprone-macro-parentheses)

using V = void*;
using S = const char*;
using Z = size_t;

CALL(V, malloc, P1(Z), GIVES(nullptr), ENOMEM)
CALL(V, calloc, P2(Z, Z), GIVES(nullptr), ENOMEM)
CALL(V, realloc, P2(V, Z), GIVES(nullptr), ENOMEM)
#ifdef __SANITIZE_ADDRESS__  // which does not make it of malloc
#if __SIZEOF_POINTER__ == 8
CALL(V, _Znwm, P1(Z), throw std::bad_alloc(), ENOMEM)
CALL(V, _ZnwmRKSt9nothrow_t, P2(Z, const std::nothrow_t&), GIVES(nullptr), ENOMEM)
#endif
#endif

CALL(int, open64, P3(S, int, unsigned), GIVES(-1), EACCES, EDQUOT, EEXIST, EINTR, EINVAL, EIO,
     EISDIR, ELOOP, EMFILE, ENAMETOOLONG, ENFILE, ENODEV, ENOENT, ENOMEM, ENOSPC, ENOTDIR, ENXIO,
     EOVERFLOW, EPERM, EROFS, ETXTBSY, EWOULDBLOCK)
CALL(FILE*, fopen64, P2(S, S), GIVES(nullptr), EACCES, EDQUOT, EINTR, EINVAL, EISDIR, ELOOP, EMFILE,
     ENAMETOOLONG, ENFILE, ENOENT, ENOMEM, ENOSPC, ENOTDIR, EOVERFLOW, EROFS)
CALL(FILE*, tmpfile64, P0, GIVES(nullptr), EACCES, EEXIST, EINTR, EMFILE, ENFILE, ENOSPC, EROFS)
CALL(char*, fgets, P3(char*, int, FILE*), STREAM(z, nullptr), EAGAIN, EBADF, EINTR, EIO)
CALL(int, fputs, P2(S, FILE*), STREAM(y, EOF), EAGAIN, EBADF, EDQUOT, EFBIG, EINTR, EIO, ENOSPC,
     EPIPE)
CALL(Z, fwrite, P4(const void*, Z, Z, FILE*), STREAM(w, 0), EAGAIN, EBADF, EDQUOT, EFBIG, EINTR,
     EIO, ENOSPC, EPIPE)
CALL(int, fflush, P1(FILE*), STREAM(x, EOF), EAGAIN, EBADF, EDQUOT, EFBIG, EINTR, EIO, ENOSPC,
     EPIPE)
CALL(int, fclose, P1(FILE*), ANYWAY(EOF), EBADF, EDQUOT, EFBIG, EINTR, EIO, ENOSPC, EPIPE)
CALL(ssize_t, read, P3(int, V, Z), GIVES(-1), EAGAIN, EBADF, EINTR, EINVAL, EIO, EISDIR)
CALL(ssize_t, write, P3(int, const void*, Z), GIVES(-1), EAGAIN, EBADF, EDQUOT, EFBIG, EINTR,
     EINVAL, EIO, ENOSPC, EPERM, EPIPE)
CALL(int, close, P1(int), ANYWAY(-1), EBADF, EINTR, EIO, ENOSPC, EDQUOT)
CALL(int, dup, P1(int), GIVES(-1), EBADF, EMFILE)
CALL(int, dup2, P2(int, int), GIVES(-1), EBADF, EBUSY, EINTR, EINVAL, EMFILE)
CALL(int, rename, P2(S, S), GIVES(-1), EACCES, EBUSY, EDQUOT, EEXIST, EINVAL, EISDIR, ENOENT,
     ENOSPC, EROFS, EXDEV)
CALL(int, fsync, P1(int), GIVES(-1), EBADF, EINTR, EIO, ENOSPC, EROFS, EDQUOT)
CALL(int, mkdir, P2(S, unsigned), GIVES(-1), EACCES, EDQUOT, EEXIST, EINVAL, ELOOP, EMLINK,
     ENAMETOOLONG, ENOENT, ENOMEM, ENOSPC, ENOTDIR, EPERM, EROFS)
CALL(int, stat64, P2(S, V), GIVES(-1), EACCES, ELOOP, ENAMETOOLONG, ENOENT, ENOMEM, ENOTDIR,
     EOVERFLOW)
CALL(int, lstat64, P2(S, V), GIVES(-1), EACCES, ELOOP, ENAMETOOLONG, ENOENT, ENOMEM, ENOTDIR,
     EOVERFLOW)
CALL(int, unlink, P1(S), GIVES(-1), EACCES, EBUSY, EIO, EISDIR, ENOENT, ENOMEM, ENOTDIR, EPERM,
     EROFS)
CALL(V, opendir, P1(S), GIVES(nullptr), EACCES, EMFILE, ENFILE, ENOENT, ENOMEM, ENOTDIR)
CALL(int, chdir, P1(S), GIVES(-1), EACCES, EIO, ELOOP, ENAMETOOLONG, ENOENT, ENOMEM, ENOTDIR)
CALL(int, fchmod, P2(int, unsigned), GIVES(-1), EACCES, EBADF, EIO, ELOOP, ENOENT, EPERM, EROFS)
CALL(int, flock, P2(int, int), GIVES(-1), EBADF, EINTR, EINVAL, ENOLCK, EWOULDBLOCK)

CALL(int, mq_open, P4(S, int, unsigned, V), GIVES(-1), EACCES, EEXIST, EINVAL, EMFILE, ENAMETOOLONG,
     ENFILE, ENOENT, ENOMEM, ENOSPC)
CALL(int, mq_send, P4(int, S, Z, unsigned), GIVES(-1), EAGAIN, EBADF, EINTR, EINVAL, EMSGSIZE,
     ETIMEDOUT)
CALL(ssize_t, mq_receive, P4(int, char*, Z, V), GIVES(-1), EAGAIN, EBADF, EINTR, EINVAL, EMSGSIZE)
CALL(ssize_t, mq_timedreceive, P5(int, char*, Z, V, V), GIVES(-1), EAGAIN, EBADF, EINTR, EINVAL,
     EMSGSIZE, ETIMEDOUT)
CALL(int, mq_getattr, P2(int, V), GIVES(-1), EBADF, EINVAL)
CALL(int, mq_close, P1(int), ANYWAY(-1), EBADF)

CALL(int, socket, P3(int, int, int), GIVES(-1), EACCES, EAFNOSUPPORT, EINVAL, EMFILE, ENFILE,
     ENOBUFS, ENOMEM, EPROTONOSUPPORT)
CALL(int, bind, P3(int, V, unsigned), GIVES(-1), EACCES, EADDRINUSE, EADDRNOTAVAIL, EBADF, EINVAL,
     ELOOP, ENAMETOOLONG, ENOENT, ENOMEM, ENOTDIR, ENOTSOCK, EROFS)
CALL(int, listen, P2(int, int), GIVES(-1), EADDRINUSE, EBADF, ENOTSOCK, EOPNOTSUPP)
CALL(int, accept4, P4(int, V, V, int), GIVES(-1), EAGAIN, EBADF, ECONNABORTED, EFAULT, EINTR,
     EINVAL, EMFILE, ENFILE, ENOBUFS, ENOMEM, ENOTSOCK, EOPNOTSUPP, EPERM, EPROTO)
CALL(int, connect, P3(int, V, unsigned), GIVES(-1), EACCES, EADDRINUSE, EADDRNOTAVAIL, EAFNOSUPPORT,
     EAGAIN, EALREADY, EBADF, ECONNREFUSED, EFAULT, EINPROGRESS, EINTR, EISCONN, ENETUNREACH,
     ENOTSOCK, EPERM, EPROTOTYPE, ETIMEDOUT)
CALL(int, getsockopt, P5(int, int, int, V, V), GIVES(-1), EBADF, EFAULT, EINVAL, ENOPROTOOPT,
     ENOTSOCK)
CALL(ssize_t, send, P4(int, const void*, Z, int), GIVES(-1), EACCES, EAGAIN, EALREADY, EBADF,
     ECONNRESET, EDESTADDRREQ, EFAULT, EINTR, EINVAL, EISCONN, EMSGSIZE, ENOBUFS, ENOMEM, ENOTCONN,
     ENOTSOCK, EOPNOTSUPP, EPIPE)
CALL(ssize_t, recv, P4(int, V, Z, int), GIVES(-1), EAGAIN, EBADF, ECONNREFUSED, EFAULT, EINTR,
     EINVAL, ENOMEM, ENOTCONN, ENOTSOCK)
CALL(int, poll, P3(V, unsigned long, int), GIVES(-1), EFAULT, EINTR, EINVAL, ENOMEM)
CALL(int, ppoll, P4(V, unsigned long, V, V), GIVES(-1), EFAULT, EINTR, EINVAL, ENOMEM)
CALL(int, signalfd, P3(int, V, int), GIVES(-1), EBADF, EINVAL, EMFILE, ENFILE, ENODEV, ENOMEM)

CALL(int, fork, P0, GIVES(-1), EAGAIN, ENOMEM, ENOSYS)
CALL(int, setsid, P0, GIVES(-1), EPERM)
CALL(int, setrlimit64, P2(int, V), GIVES(-1), EFAULT, EINVAL, EPERM)
CALL(int, pthread_create, P4(V, V, V, V), ERROR, EAGAIN, EINVAL, EPERM)
CALL(int, pthread_join, P2(unsigned long, V), ERROR, EDEADLK, EINVAL, ESRCH)
CALL(int, pthread_detach, P1(unsigned long), ERROR, EINVAL, ESRCH)
CALL(int, pthread_attr_init, P1(V), ERROR, ENOMEM)
CALL(int, pthread_attr_destroy, P1(V), real(x); ERROR, EINVAL)
CALL(int, pthread_attr_setdetachstate, P2(V, int), ERROR, EINVAL)
CALL(int, pthread_mutexattr_init, P1(V), ERROR, ENOMEM)
CALL(int, pthread_mutexattr_settype, P2(V, int), ERROR, EINVAL)
CALL(int, pthread_mutex_init, P2(V, V), ERROR, EAGAIN, EBUSY, EINVAL, ENOMEM, EPERM)
CALL(int, pthread_mutex_timedlock, P2(V, V), ERROR, EAGAIN, EDEADLK, EINVAL, ETIMEDOUT)
CALL(int, pthread_cond_init, P2(V, V), ERROR, EAGAIN, EBUSY, EINVAL, ENOMEM)
CALL(int, pthread_cond_timedwait, P3(V, V, V), ERROR, EINTR, EINVAL, EPERM, ETIMEDOUT)
CALL(int, pthread_sigmask, P3(int, V, V), ERROR, EFAULT, EINVAL)
CALL(int, sem_init, P3(V, int, unsigned), GIVES(-1), EINVAL, ENOSYS)
CALL(V, sem_open, P4(S, int, unsigned, unsigned), GIVES(nullptr), EACCES, EEXIST, EINVAL, EMFILE,
     ENAMETOOLONG, ENFILE, ENOENT, ENOMEM)
CALL(int, sem_wait, P1(V), GIVES(-1), EINTR, EINVAL)
CALL(int, sem_trywait, P1(V), GIVES(-1), EAGAIN, EINTR, EINVAL)
CALL(int, sem_post, P1(V), GIVES(-1), EINVAL, EOVERFLOW)
CALL(int, sem_getvalue, P2(V, V), GIVES(-1), EINVAL)
CALL(int, sem_close, P1(V), ANYWAY(-1), EINVAL)

// What a program's main begins with never fails.
CALL(void, openlog, P3(S, int, int), , 0)
CALL(int, setvbuf, P4(FILE*, char*, int, Z), , 0)

// Pauses cost no time, and the daemon, which idles for ever, ends when it begins to.
int faulty_usleep(unsigned) DEFINED_AS(usleep);
int faulty_usleep(unsigned) {
    return 0;
}
unsigned faulty_sleep(unsigned) DEFINED_AS(sleep);
unsigned faulty_sleep(unsigned) {
    std::exit(0);
}

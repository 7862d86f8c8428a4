// A recursive mutex as an object, and its scope guard.
#pragma once

#include <mediacheckd/vcore/sys_mutex.h>

// Other components find these by name.
#pragma GCC visibility push(default)

namespace vcore {

// A recursive mutex: a thread that holds it may lock it again and unlocks it as many times. Where
// its storage could not be allocated it is an always-free lock: locking and unlocking do nothing.
class Mutex {
  public:
    Mutex();
    virtual ~Mutex();
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    // Return 0 on success or without storage, else the error number.
    int lock() { return mStorage == nullptr ? 0 : sys_mutex_lock(mStorage); }
    int unlock() { return mStorage == nullptr ? 0 : sys_mutex_unlock(mStorage); }

    // The mutex below, owned by this object, or null; for a condition variable to wait with.
    pthread_mutex_t* storage() const { return mStorage; }

  private:
    pthread_mutex_t* mStorage;
};

// Holds a mutex for a scope. A null mutex is left alone.
class AutoLock {
  public:
    explicit AutoLock(Mutex* mutex) : mMutex(mutex) {
        if (mMutex != nullptr) {
            mMutex->lock();
        }
    }
    virtual ~AutoLock() {
        if (mMutex != nullptr) {
            mMutex->unlock();
        }
    }
    AutoLock(const AutoLock&) = delete;
    AutoLock& operator=(const AutoLock&) = delete;

  private:
    Mutex* mMutex;
};

}  // namespace vcore

#pragma GCC visibility pop

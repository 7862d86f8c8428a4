#include "vcore/mutex.h"

namespace vcore {

Mutex::Mutex() : mStorage(sys_mutex_create()) {
    if (mStorage != nullptr) {
        sys_mutex_init(mStorage, nullptr);
    }
}

Mutex::~Mutex() {
    if (mStorage != nullptr) {
        sys_mutex_destroy(mStorage);
    }
}

AutoLock::AutoLock(Mutex* mutex) : mMutex(mutex) {
    if (mMutex != nullptr) {
        mMutex->lock();
    }
}

AutoLock::~AutoLock() {
    if (mMutex != nullptr) {
        mMutex->unlock();
    }
}

}  // namespace vcore

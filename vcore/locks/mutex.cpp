#include <mediacheckd/vcore/mutex.h>

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

}  // namespace vcore

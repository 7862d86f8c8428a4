// A file descriptor with one owner.
#pragma once

#include <unistd.h>

#include <utility>

namespace host {

class UniqueFd {
  public:
    explicit UniqueFd(int descriptor = -1) noexcept : mDescriptor(descriptor) {}
    UniqueFd(UniqueFd&& other) noexcept : mDescriptor(other.release()) {}
    UniqueFd& operator=(UniqueFd&& other) noexcept {
        std::swap(mDescriptor, other.mDescriptor);
        return *this;
    }
    ~UniqueFd() {
        if (mDescriptor >= 0) {
            close(mDescriptor);
        }
    }

    // The descriptor, or a negative number when there is none. It stays owned.
    [[nodiscard]] int get() const noexcept { return mDescriptor; }

    // Gives the descriptor away; the caller closes it.
    [[nodiscard]] int release() noexcept { return std::exchange(mDescriptor, -1); }

  private:
    int mDescriptor;
};

}  // namespace host

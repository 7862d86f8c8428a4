// Trace lines at entry to and exit from a scope.
#pragma once

#include <cstdint>
#include <string>

// Other components find this by name.
#pragma GCC visibility push(default)

namespace vcore {

// Writes "NAME Enter" when it is made and "NAME Exit" when its scope is left, by an exception too.
class Tracer {
  public:
    Tracer(std::uint32_t category, std::uint32_t level, const char* name);
    virtual ~Tracer();
    Tracer(const Tracer&) = delete;
    Tracer& operator=(const Tracer&) = delete;

  private:
    std::uint32_t mCategory;
    std::uint32_t mLevel;
    std::string mName;
};

}  // namespace vcore

#pragma GCC visibility pop

#include <mediacheckd/vcore/tracer.h>

#include <mediacheckd/vcore/logger.h>

namespace vcore {

Tracer::Tracer(std::uint32_t category, std::uint32_t level, const char* name)
    : mCategory(category), mLevel(level), mName(name) {
    if (Logger* const logger = Logger::get()) {
        logger->log(mCategory, mLevel, "  [TRACE]: %s Enter\n", mName.c_str());
    }
}

Tracer::~Tracer() {
    if (Logger* const logger = Logger::get()) {
        logger->log(mCategory, mLevel, "  [TRACE]: %s Exit\n", mName.c_str());
    }
}

}  // namespace vcore

#include "simulator/media/media_facts.h"

namespace simulator {

std::optional<MediaFacts> readMediaFacts(const std::filesystem::path& /*path*/) {
    return std::nullopt;
}

}  // namespace simulator

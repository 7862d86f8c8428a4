#include "simulator/media/media_reader.h"

#include <utility>

#include "simulator/card/input_error.h"

namespace simulator {

namespace {

void setIfSaid(u32le& field, uint32_t value) {
    if (value != 0) {
        field = value;
    }
}

void apply(const MediaFacts& facts, MediaFile& file) {
    setIfSaid(file.record.created, facts.created);
    file.video.duration_ms = facts.durationMs;
    file.moreInfo.width = facts.width;
    file.moreInfo.height = facts.height;
    file.moreInfo.frame_rate_numerator = facts.frameRateNumerator;
    file.moreInfo.frame_rate_denominator = facts.frameRateDenominator;
    file.moreInfo.is_progressive = facts.progressive ? 1 : 0;
    file.highlights = facts.highlights;
}

}  // namespace

void MediaReader::describe(const std::filesystem::path& card, std::vector<MediaItem>& items,
                           std::vector<Skipped>& skipped) {
    std::unordered_map<std::string, Known> earlier = std::exchange(mKnown, {});
    for (MediaItem& item : items) {
        for (MediaFile& file : item.files) {
            const std::string name = pathOf(file.record);
            Known& known = mKnown[name] = std::move(earlier[name]);
            if (known.size != file.record.size || known.modified != file.record.modified) {
                known = {file.record.size, file.record.modified};
                try {
                    known.facts = readMediaFacts(card / "DCIM" / name);
                } catch (const InputError& error) {
                    known.trouble = error.what();
                }
            }
            if (known.facts) {
                apply(*known.facts, file);
            } else if (!known.trouble.empty()) {
                skipped.push_back({name, "its content, which cannot be read: " + known.trouble});
            }
        }
    }
}

}  // namespace simulator

#include "simulator/card/card.h"

#include "simulator/card/card_settings.h"
#include "simulator/card/media_grouping.h"
#include "simulator/card/media_name.h"
#include <mediacheckd/vxMediaRTOSDB/model_number.h>

namespace simulator {

namespace {

// The model that a camera is taken for when its settings do not say.
constexpr uint32_t kDefaultModel = 30;

}  // namespace

Database loadCard(const std::filesystem::path& card, const DescribeMedia& describe) {
    const CardSettings settings(card / "card.json");
    std::vector<Skipped> skipped;
    std::vector<CardDirectory> directories = scanCard(card, skipped);
    std::vector<MediaItem> items = groupMedia(
        directories, countsChaptersFromOne(settings.modelNumber().value_or(kDefaultModel)),
        [&](const std::string& directory, const std::string& file) {
            return settings.contentType(directory, file);
        },
        skipped);
    describe(items, skipped);
    settings.applyTo(items);

    Database database(std::move(items), std::move(directories));
    database.modelNumber = settings.modelNumber();
    database.sessionId = settings.sessionId().value_or(database.sessionId);
    database.skipped = std::move(skipped);
    return database;
}

}  // namespace simulator

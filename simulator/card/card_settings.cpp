#include "simulator/card/card_settings.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <limits>
#include <unordered_map>

#include "simulator/card/file_settings.h"
#include "simulator/card/input_error.h"
#include "simulator/card/json_place.h"

namespace simulator {

namespace {

constexpr char kFiles[] = "files";
constexpr uint32_t kAny = std::numeric_limits<uint32_t>::max();

struct Place {
    MediaItem* item;
    MediaFile* file;
};
using Places = std::unordered_map<std::string, Place>;

// The files of the items by directory, slash and name.
Places placesOf(std::vector<MediaItem>& items) {
    Places places;
    for (MediaItem& item : items) {
        for (MediaFile& file : item.files) {
            places.emplace(pathOf(file.record), Place{&item, &file});
        }
    }
    return places;
}

Place placeOf(const Places& places, const std::string& name, const JsonPlace& settings) {
    const auto place = places.find(name);
    if (place == places.end()) {
        settings.fail("no item of the card has this file");
    }
    return place->second;
}

}  // namespace

CardSettings::CardSettings(const std::filesystem::path& path) : mPath(path.string()) {
    errno = 0;
    std::ifstream file(path);
    if (!file) {
        if (errno == ENOENT) {
            return;
        }
        throw InputError(mPath + ": " + std::strerror(errno));
    }
    mDocument = readJson(file, mPath);
    const JsonPlace document(mDocument, mPath);
    document.forMembers([this](const std::string& name, const JsonPlace& value) {
        if (name == "model_number") {
            mModelNumber = value.number(kAny);
        } else if (name == "session_id") {
            mSessionId = value.number(kAny);
        } else if (name == kFiles) {
            value.forMembers([](const std::string&, const JsonPlace&) {});
        } else {
            value.fail("is not known");
        }
    });
}

std::optional<uint32_t> CardSettings::contentType(const std::string& directory,
                                                  const std::string& file) const {
    const auto files = JsonPlace(mDocument, mPath).member(kFiles);
    const auto settings = files ? files->member(directory + "/" + file) : std::nullopt;
    const auto value = settings ? settings->member(kContentTypeMember) : std::nullopt;
    return value ? std::optional(readContentType(*value)) : std::nullopt;
}

void CardSettings::applyTo(std::vector<MediaItem>& items) const {
    const auto files = JsonPlace(mDocument, mPath).member(kFiles);
    if (!files) {
        return;
    }
    // Missing members first: they take files away, and the rest is about the files that are left.
    files->forMembers(
        [&, places = placesOf(items)](const std::string& name, const JsonPlace& settings) {
            if (const auto missing = settings.member(kMissingMember)) {
                setMissing(*missing, *placeOf(places, name, settings).item);
            }
        });
    files->forMembers(
        [places = placesOf(items)](const std::string& name, const JsonPlace& settings) {
            const Place place = placeOf(places, name, settings);
            settings.forMembers([&](const std::string& member, const JsonPlace& value) {
                if (member != kMissingMember) {
                    setFileMember(member, value, *place.item, *place.file);
                }
            });
        });
}

}  // namespace simulator

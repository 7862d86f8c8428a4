#include "simulator/card/media_grouping.h"

#include <algorithm>
#include <map>

#include "simulator/card/media_name.h"

namespace simulator {

namespace {

struct Group {
    uint32_t number = 0;
    std::vector<MediaFile> files = {};
};

MediaFile mediaFile(const std::string& directory, const CardFile& file, const MediaName& name) {
    MediaFile media{.number = name.number};
    media.record.content_type = name.contentType;
    directory.copy(media.record.dir_name, kDirNameSize);
    file.name.copy(media.record.file_name, kFileNameSize);
    media.record.created = file.modified;
    media.record.modified = file.modified;
    media.record.size = file.size;
    return media;
}

MediaItem itemOf(MediaFile file, uint32_t groupNumber) {
    const uint32_t number = file.number;
    return {.files = {std::move(file)},
            .groupNumber = groupNumber,
            .firstNumber = number,
            .lastNumber = number};
}

// The items of one group: its files by number, a new item where one would span too much. A file
// whose number is taken already is an item of its own.
void appendGroup(std::vector<MediaItem>& items, Group group) {
    std::ranges::stable_sort(group.files, {}, &MediaFile::number);
    const std::size_t firstOfGroup = items.size();
    for (MediaFile& file : group.files) {
        if (items.size() == firstOfGroup || items.back().lastNumber == file.number ||
            file.number - items.back().firstNumber >= kSpanMax) {
            items.push_back(itemOf(std::move(file), group.number));
            continue;
        }
        items.back().lastNumber = file.number;
        items.back().files.push_back(std::move(file));
    }
    for (auto item = items.begin() + static_cast<std::ptrdiff_t>(firstOfGroup); item != items.end();
         ++item) {
        // A recording of one chapter is a single video.
        if (item->contentType() == DB_CONTENT_TYPE_CHAPTERED_VIDEO && item->files.size() == 1) {
            item->files.front().record.content_type = DB_CONTENT_TYPE_SINGLE_VIDEO;
        }
    }
}

void appendDirectory(std::vector<MediaItem>& items, const CardDirectory& directory,
                     bool oneBasedChapters, const ExtraContentType& extraContentType,
                     std::vector<Skipped>& skipped) {
    std::map<std::string, Group> groups;
    std::vector<MediaItem> found;
    for (const CardFile& file : directory.files) {
        auto name = parseMediaName(file.name, oneBasedChapters);
        if (!name) {
            const auto contentType = extraContentType(directory.name, file.name);
            if (!contentType) {
                skipped.push_back(
                    {directory.name + "/" + file.name, "its name is no video's and no photo's"});
                continue;
            }
            name = MediaName{*contentType};
        }
        MediaFile media = mediaFile(directory.name, file, *name);
        if (name->groupKey.empty()) {
            found.push_back(itemOf(std::move(media), 0));
        } else {
            Group& group = groups[name->groupKey];
            group.number = name->groupNumber;
            group.files.push_back(std::move(media));
        }
    }
    for (auto& [key, group] : groups) {
        appendGroup(found, std::move(group));
    }
    std::ranges::sort(found, {}, [](const MediaItem& item) {
        return std::string_view(item.leader().record.file_name, kFileNameSize);
    });
    std::ranges::move(found, std::back_inserter(items));
}

}  // namespace

std::vector<MediaItem> groupMedia(const std::vector<CardDirectory>& directories,
                                  bool oneBasedChapters, const ExtraContentType& extraContentType,
                                  std::vector<Skipped>& skipped) {
    std::vector<MediaItem> items;
    for (const CardDirectory& directory : directories) {
        appendDirectory(items, directory, oneBasedChapters, extraContentType, skipped);
    }
    return items;
}

}  // namespace simulator

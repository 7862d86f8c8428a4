#include "simulator/card/database.h"

#include <algorithm>

namespace simulator {

namespace {

std::string keyOf(const char (&directory)[kDirNameSize], const char (&file)[kFileNameSize]) {
    return std::string(directory, kDirNameSize).append(file, kFileNameSize);
}

}  // namespace

Database::Database(std::vector<MediaItem> items, std::vector<CardDirectory> directories)
    : mItems(std::move(items)), mDirectories(std::move(directories)) {
    for (std::size_t item = 0; item < mItems.size(); ++item) {
        for (std::size_t file = 0; file < mItems[item].files.size(); ++file) {
            const db_item_record& record = mItems[item].files[file].record;
            mPlaces.emplace(keyOf(record.dir_name, record.file_name), Place{item, file});
        }
    }
}

std::optional<Database::Found> Database::find(const db_file_name& name) {
    const auto place = mPlaces.find(keyOf(name.dir_name, name.file_name));
    if (place == mPlaces.end()) {
        return std::nullopt;
    }
    MediaItem& item = mItems[place->second.item];
    return Found{&item, &item.files[place->second.file]};
}

bool Database::writeUploadStatus(const db_file_name& name, uint32_t status) {
    const auto found = find(name);
    if (!found) {
        return false;
    }
    found->file->record.upload_status = status;
    mWrittenStatuses[keyOf(name.dir_name, name.file_name)] = status;
    return true;
}

void Database::repeatStatusWrites(const Database& earlier) {
    for (const auto& [key, status] : earlier.mWrittenStatuses) {
        db_file_name name;
        key.copy(name.dir_name, kDirNameSize);
        key.copy(name.file_name, kFileNameSize, kDirNameSize);
        static_cast<void>(writeUploadStatus(name, status));
    }
}

const MediaFile* Database::findByGumi(const db_gumi& gumi) const {
    const auto sameGumi = [&](const db_gumi& other) {
        return std::equal(std::begin(gumi.bytes), std::end(gumi.bytes), other.bytes);
    };
    if (sameGumi(db_gumi{})) {
        return nullptr;
    }
    for (const MediaItem& item : mItems) {
        for (const MediaFile& file : item.files) {
            if (sameGumi(file.gumi)) {
                return &file;
            }
        }
    }
    return nullptr;
}

}  // namespace simulator

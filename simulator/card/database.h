// The media database as a value.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "simulator/card/card_scan.h"
#include "simulator/card/media_item.h"
#include "simulator/card/skipped.h"
#include <mediacheckd/vxMediaRTOSDB/db_requests.h>

namespace simulator {

class Database {
  public:
    // items: in the order in which lists give them. directories: everything a scan may list.
    explicit Database(std::vector<MediaItem> items = {},
                      std::vector<CardDirectory> directories = {});

    [[nodiscard]] const std::vector<MediaItem>& items() const { return mItems; }
    [[nodiscard]] const std::vector<CardDirectory>& directories() const { return mDirectories; }

    // A file with the item that it belongs to.
    struct Found {
        const MediaItem* item;
        MediaFile* file;
    };
    // Gives none when the database has no such file. Valid as long as the database.
    [[nodiscard]] std::optional<Found> find(const db_file_name& name);
    // The first file with this GUMI; an all-zero GUMI is nobody's.
    [[nodiscard]] const MediaFile* findByGumi(const db_gumi& gumi) const;

    // Returns false when the database has no such file.
    [[nodiscard]] bool writeUploadStatus(const db_file_name& name, uint32_t status);
    // Writes what was written to the database that this one takes the place of, as far as it has
    // the files.
    void repeatStatusWrites(const Database& earlier);

    uint32_t sessionId = 1;
    std::optional<uint32_t> modelNumber = {};
    std::vector<Skipped> skipped = {};  // what is on the card and not in here

  private:
    struct Place {
        std::size_t item;
        std::size_t file;
    };

    std::vector<MediaItem> mItems;
    std::vector<CardDirectory> mDirectories;
    // By directory and file name as on the wire.
    std::unordered_map<std::string, Place> mPlaces;
    std::unordered_map<std::string, uint32_t> mWrittenStatuses;
};

}  // namespace simulator

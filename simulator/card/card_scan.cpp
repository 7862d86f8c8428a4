#include "simulator/card/card_scan.h"

#include <algorithm>
#include <chrono>
#include <limits>

#include "simulator/card/input_error.h"
#include <mediacheckd/vxMediaRTOSDB/db_requests.h>

namespace simulator {

namespace fs = std::filesystem;

namespace {

uint32_t modificationTime(const fs::directory_entry& file) {
    const auto time = std::chrono::file_clock::to_sys(file.last_write_time());
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count();
    return static_cast<uint32_t>(
        std::clamp<int64_t>(seconds, 0, std::numeric_limits<uint32_t>::max()));
}

CardDirectory scanDirectory(const fs::path& path, std::vector<Skipped>& skipped) {
    CardDirectory directory{path.filename().string(), {}};
    for (const fs::directory_entry& file : fs::directory_iterator(path)) {
        const std::string name = file.path().filename().string();
        if (!file.is_regular_file()) {
            skipped.push_back({directory.name + "/" + name, "it is no file"});
        } else if (name.size() > kFileNameSize) {
            skipped.push_back(
                {directory.name + "/" + name, "its name is longer than 12 characters"});
        } else {
            directory.files.push_back({name, file.file_size(), modificationTime(file)});
        }
    }
    std::ranges::sort(directory.files, {}, &CardFile::name);
    return directory;
}

}  // namespace

std::vector<CardDirectory> scanCard(const fs::path& card, std::vector<Skipped>& skipped) {
    std::vector<CardDirectory> directories;
    try {
        for (const fs::directory_entry& entry : fs::directory_iterator(card / "DCIM")) {
            const std::string name = entry.path().filename().string();
            if (!entry.is_directory()) {
                skipped.push_back({name, "it is in no directory"});
            } else if (name.size() != kDirNameSize) {
                skipped.push_back({name, "its name is not of 8 characters"});
            } else {
                directories.push_back(scanDirectory(entry.path(), skipped));
            }
        }
    } catch (const fs::filesystem_error& error) {
        throw InputError(error.path1().string() + ": " + error.code().message());
    }
    std::ranges::sort(directories, {}, &CardDirectory::name);
    return directories;
}

}  // namespace simulator

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

CardDirectory scanDirectory(const fs::path& path) {
    CardDirectory directory{path.filename().string(), {}};
    for (const fs::directory_entry& file : fs::directory_iterator(path)) {
        const std::string name = file.path().filename().string();
        if (name.size() <= kFileNameSize && file.is_regular_file()) {
            directory.files.push_back({name, file.file_size(), modificationTime(file)});
        }
    }
    std::ranges::sort(directory.files, {}, &CardFile::name);
    return directory;
}

}  // namespace

std::vector<CardDirectory> scanCard(const fs::path& card) {
    std::vector<CardDirectory> directories;
    try {
        for (const fs::directory_entry& entry : fs::directory_iterator(card / "DCIM")) {
            if (entry.path().filename().string().size() == kDirNameSize && entry.is_directory()) {
                directories.push_back(scanDirectory(entry.path()));
            }
        }
    } catch (const fs::filesystem_error& error) {
        throw InputError(error.path1().string() + ": " + error.code().message());
    }
    std::ranges::sort(directories, {}, &CardDirectory::name);
    return directories;
}

}  // namespace simulator

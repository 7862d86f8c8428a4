// scan: the files of a directory, read past the database.
#include <memory>
#include <vector>

#include "tools/mediactl/command_line.h"
#include "tools/mediactl/exchange_watch.h"
#include "tools/mediactl/output.h"
#include "tools/mediactl/record_json.h"
#include <mediacheckd/vxMediaRTOSDB/directory_scan.h>

namespace mediactl {

namespace {

constexpr uint32_t kMaxEntries = 100000;
constexpr int kNoEntries = -5;  // an empty directory

int scan(const std::string& directory) {
    std::vector<db_scandir_entry> entries(kMaxEntries);
    uint32_t count = kMaxEntries;
    const int result = dbScanDirectory(directory.c_str(), entries.data(), &count, nullptr);
    if (exchangeTrouble() || (result != 0 && result != kNoEntries)) {
        return failExchange("the directory cannot be read");
    }
    Listing listing(
        "files",
        {{"file_name", "file", -12}, {"size_bytes", "size", 9}, {"modified", "modified", -19}});
    for (const auto& entry : std::span(entries).first(count)) {
        listing.add({{"file_name", nameText(entry.file_name)},
                     {"size_bytes", uint32_t{entry.word1}},
                     {"modified", uint32_t{entry.word2}}});
    }
    listing.end({{"directory", directory}});
    return kDone;
}

}  // namespace

void addScanCommands(CommandLine& line) {
    auto directory = std::make_shared<std::string>();
    line.add("scan", "List the files of a directory past the database",
             [directory] { return scan(*directory); })
        .argument("DIR", directory.get(), kDirectory, "The directory");
}

}  // namespace mediactl

// scan: the files of a directory, read past the database.
#include <memory>
#include <vector>

#include "tools/mediactl/command_line.h"
#include "tools/mediactl/output.h"
#include "tools/mediactl/record_json.h"
#include <mediacheckd/vxMediaRTOSDB/directory_scan.h>

namespace mediactl {

namespace {

constexpr uint32_t kMaxEntries = 100000;

int scan(const std::string& directory) {
    std::vector<db_scandir_entry> entries(kMaxEntries);
    uint32_t count = kMaxEntries;
    const int result = dbScanDirectory(directory.c_str(), entries.data(), &count, nullptr);
    Listing listing("files",
                    {{"file_name", "file", -12}, {"word1", "word1", 10}, {"word2", "word2", 10}});
    for (const auto& entry : std::span(entries).first(count)) {
        listing.add({{"file_name", nameText(entry.file_name)},
                     {"word1", uint32_t{entry.word1}},
                     {"word2", uint32_t{entry.word2}}});
    }
    if (result == 0 || count != 0) {
        listing.end({{"directory", directory}});
    }
    return result == 0 ? kDone : fail("the scan of %s failed (%d)", directory.c_str(), result);
}

}  // namespace

void addScanCommands(CommandLine& line) {
    auto directory = std::make_shared<std::string>();
    line.add("scan", "List the files of a directory past the database",
             [directory] { return scan(*directory); })
        .argument("DIR", directory.get(), kDirectory, "The directory");
}

}  // namespace mediactl

// items: the lists from which uploads are chosen.
#include <algorithm>
#include <memory>

#include "tools/mediactl/command_line.h"
#include "tools/mediactl/exchange_watch.h"
#include "tools/mediactl/output.h"
#include "tools/mediactl/record_json.h"
#include <mediacheckd/vxMediaRTOSDB/zep_queries.h>

namespace mediactl {

namespace {

constexpr uint32_t kPageSize = 15;

struct ItemOptions {
    bool session = false;
    bool files = false;
    uint32_t start = 0;
    uint32_t limit = UINT32_MAX;
};

// Prints the items of all pages, each page when all of it is known.
class ItemListing {
  public:
    explicit ItemListing(bool files)
        : mFiles(files),
          mListing("items", {{"content_type", "type", 4},
                             {"kind", "kind", -16},
                             {"file", "file", -21},
                             {"group_number", "group", 5},
                             {"first_number", "first", 5},
                             {"last_number", "last", 5},
                             {"upload_status", "upload", 6},
                             {"highlight_count", "marks", 5},
                             {"score", "score", 5},
                             {"created", "created", -19},
                             {"duration_s", "length", 8},
                             {"clip", "clip", -4},
                             {"size_bytes", "size", 9}}) {}

    static void takeItem(void* self, zep_item_s* item) {
        static_cast<ItemListing*>(self)->take(*item);
    }
    static void takeFile(void* self, char* dirName, char* fileName) {
        static_cast<ItemListing*>(self)->mPage.back()["files"].push_back(path(dirName, fileName));
    }

    void printPage() {
        for (const Json& item : mPage) {
            mListing.add(item);
            for (const auto& file : mFiles ? item["files"] : Json::array()) {
                mListing.addNote(file);
            }
        }
        mCount += static_cast<uint32_t>(mPage.size());
        mPage.clear();
    }

    void end(uint32_t total, uint32_t session) {
        mListing.end({{"total", total}, {"session_id", session}});
    }

    // Items printed so far.
    [[nodiscard]] uint32_t count() const { return mCount; }

  private:
    static std::string path(const char* dirName, const char* fileName) {
        return std::string(dirName) + "/" + fileName;
    }

    void take(const zep_item_s& item) {
        mPage.push_back({
            {"content_type", item.content_type},
            {"kind", kindName(item.content_type)},
            {"file", path(item.dir_name, item.file_name)},
            {"group_number", item.group_number},
            {"first_number", item.first_number},
            {"last_number", item.last_number},
            {"upload_status", item.upload_status},
            {"highlight_count", item.highlight},
            {"score", item.score},
            {"created", item.timestamp},
            {"duration_s", item.duration_s},
            {"clip", item.clip != 0},
            {"size_bytes", item.size_bytes},
        });
        if (mFiles) {
            mPage.back()["files"] = Json::array();
        }
    }

    bool mFiles;
    Listing mListing;
    std::vector<Json> mPage;
    uint32_t mCount = 0;
};

int items(const ItemOptions& options) {
    const auto fetch = options.session ? dbGetZEPSessionFileList : dbGetZEPItems;
    const auto fileCallback = options.files ? ItemListing::takeFile : nullptr;
    ItemListing listing(options.files);
    uint32_t session = 0;
    uint32_t total = 0;
    int status = kDone;
    for (uint32_t listed = 0; listed < options.limit; listed = listing.count()) {
        const uint32_t index = options.start + listed;
        const uint32_t count = std::min(kPageSize, options.limit - listed);
        uint32_t pageSession = 0;
        const int result = fetch(count, index, &listing, ItemListing::takeItem, &listing,
                                 fileCallback, &listing, &pageSession, &total);
        if (result < 0 || exchangeTrouble()) {
            status =
                failExchange("the page from item " + std::to_string(index) + " on cannot be read");
        } else if (listing.printPage(); listed != 0 && pageSession != session) {
            status = failChanged();
        } else if (listing.count() == listed && index < total) {
            status = fail("the database delivers no item %u, but has %u items", index, total);
        }
        session = pageSession;
        if (status != kDone || options.start + uint64_t{listing.count()} >= total) {
            break;
        }
    }
    if (status == kDone) {
        listing.end(total, session);
    }
    return status;
}

}  // namespace

void addItemCommands(CommandLine& line) {
    auto options = std::make_shared<ItemOptions>();
    line.add("items", "List the items that are candidates for upload",
             [options] { return items(*options); })
        .flag("--session", &options->session, "List the session files instead")
        .flag("--files", &options->files, "List the files of each item below it")
        .option("--start", "N", &options->start, "Begin with item N; the first is 0")
        .option("--limit", "N", &options->limit, "List at most N items");
}

}  // namespace mediactl

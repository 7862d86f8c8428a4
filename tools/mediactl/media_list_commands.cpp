// count, candidates, upload-status: the media list as the uploading side uses it.
#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>

#include "simulator/card/input_error.h"
#include "simulator/card/input_file.h"
#include "tools/mediactl/argument_forms.h"
#include "tools/mediactl/command_line.h"
#include "tools/mediactl/engine_log.h"
#include "tools/mediactl/exchange_watch.h"
#include "tools/mediactl/output.h"
#include "tools/mediactl/progress.h"
#include "tools/mediactl/rules_file.h"
#include <mediacheckd/medialist/sort_rules.h>
#include <mediacheckd/medialist/zep_media_list.h>

namespace mediactl {

namespace {

// What the uploading side calls the kinds of media.
constexpr const char* kMediaCodes[] = {"photo",
                                       "video",
                                       "burst",
                                       "time lapse",
                                       "time-lapse video",
                                       "grouped video",
                                       "session file",
                                       "continuous photos",
                                       "night photo",
                                       "night lapse",
                                       nullptr,
                                       "video from burst"};

Json mediaName(int code) {
    const auto index = static_cast<size_t>(code);
    return index < std::size(kMediaCodes) && kMediaCodes[index] ? Json(kMediaCodes[index]) : Json();
}

struct Choice {
    std::string rules;
    std::string sort;
    uint32_t limit = UINT32_MAX;
    bool dryRun = false;
};

// Reads a sort-rules document that holds; none without a path.
std::optional<std::string> readOrder(const std::string& path) {
    if (path.empty()) {
        return std::nullopt;
    }
    std::ifstream file = simulator::openInput(path);
    std::string document(std::istreambuf_iterator<char>(file), {});
    if (std::unique_ptr<Comparinator>(create(document.c_str())) == nullptr) {
        throw simulator::InputError(path + ": not a sort-rules document");
    }
    return document;
}

int failed() {
    return failExchange("the media list cannot be read");
}

int count(const Choice& choice) {
    std::vector<UploadRule> rules = readRules(choice.rules);
    if (choice.dryRun) {
        holdStatusWrites();
    }
    const EngineLog log;
    ZEPMediaList list;
    const int result = list.getMediaCount(rules);
    if (result < 0 || exchangeTrouble()) {
        return failed();
    }
    Json found = {{"count", result}};
    if (choice.dryRun) {
        found["status_writes_held_back"] = heldStatusWrites();
    }
    printResult(found);
    return kDone;
}

void print(Listing& listing, const MediaOutput& item) {
    const Json first = item.files.empty() ? Json() : Json(item.files.front());
    listing.add({{"media_code", item.mediaCode},
                 {"kind", mediaName(item.mediaCode)},
                 {"file", first},
                 {"files", item.files}});
    for (size_t i = 1; i < item.files.size(); ++i) {
        listing.addNote("   " + item.files[i]);
    }
}

// Prints what the walk gives. Returns an ExitStatus.
int walk(ZEPMediaList& list, std::vector<UploadRule>& rules, uint32_t limit, int matches,
         Listing& listing) {
    for (uint32_t listed = 0; listed < limit; ++listed) {
        noteItems(listed, std::min(limit, static_cast<uint32_t>(matches)));
        MediaOutput item;
        const int result = list.getNextMedia(&item, rules);
        if (exchangeTrouble()) {
            return failed();
        }
        if (result == ZEPMediaList::kEnd) {
            break;
        }
        if (result == ZEPMediaList::kSessionChanged) {
            return failChanged();
        }
        if (result != ZEPMediaList::kItem) {
            return failed();
        }
        print(listing, item);
    }
    return kDone;
}

int candidates(const Choice& choice) {
    const EngineLog log;
    std::vector<UploadRule> rules = readRules(choice.rules);
    if (choice.dryRun) {
        holdStatusWrites();
    }
    // Before the count, which may write to the database.
    const std::optional<std::string> order = readOrder(choice.sort);
    ZEPMediaList list;
    const int matches = list.getMediaCount(rules);
    if (matches < 0 || exchangeTrouble()) {
        return failed();
    }
    const int sorted = order ? list.sort(order->c_str()) : 0;
    if (sorted != 0 || exchangeTrouble()) {
        return failed();
    }
    Listing listing("candidates", {{"media_code", "code", 4}, {"file", "files", -1}});
    const int status = walk(list, rules, choice.limit, matches, listing);
    if (status == kDone) {
        listing.end({{"count", matches}});
    }
    return status;
}

int uploadStatus(const std::string& path, uint32_t status) {
    const EngineLog log;
    const int result = ZEPMediaList().setUploadStatus(path, static_cast<int>(status));
    if (result != 0 || exchangeTrouble()) {
        return failExchange("the status cannot be written");
    }
    printResult({{"file", path}, {"upload_status", status}});
    return kDone;
}

// Runs a command; a file that cannot be used is a wrong call.
template <typename Run>
int withFiles(Run run) {
    try {
        return run();
    } catch (const simulator::InputError& error) {
        return refuseCall(error.what(), "");
    }
}

}  // namespace

void addMediaListCommands(CommandLine& line) {
    auto choice = std::make_shared<Choice>();
    line.add("count", "Count the items that the upload rules accept",
             [choice] { return withFiles([&] { return count(*choice); }); })
        .requiredOption("--rules", "FILE", &choice->rules, "The upload rules")
        .flag("--dry-run", &choice->dryRun, "Write no upload status");
    line.add("candidates", "List the items that the upload rules accept, with all their files",
             [choice] { return withFiles([&] { return candidates(*choice); }); })
        .requiredOption("--rules", "FILE", &choice->rules, "The upload rules")
        .flag("--dry-run", &choice->dryRun, "Write no upload status")
        .option("--sort", "FILE", &choice->sort, "List them in the order of these sort rules")
        .option("--limit", "N", &choice->limit, "List at most N items");

    auto file = std::make_shared<std::string>();
    auto status = std::make_shared<uint32_t>();
    line.add("upload-status", "Write the upload status of a file through the media list",
             [file, status] { return uploadStatus(*file, *status); })
        .argument("DIR/FILE", file.get(), kFile, "The file")
        .argument("N", status.get(), "The status");
}

}  // namespace mediactl

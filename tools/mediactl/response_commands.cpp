// medialist, metadata and paged: the HTTP responses that an app gets.
#include <climits>
#include <memory>

#include "tools/mediactl/command_line.h"
#include "tools/mediactl/exchange_watch.h"
#include "tools/mediactl/output.h"
#include <mediacheckd/vxMediaRTOSDB/db_requests.h>
#include <mediacheckd/vxMediaRTOSDB/media_list.h>
#include <mediacheckd/vxMediaRTOSDB/media_metadata.h>

namespace mediactl {

namespace {

constexpr int kHttpOk = 200;

struct PagedOptions {
    uint32_t start = 0;
    uint32_t count = 10;
    uint32_t pages = INT_MAX;
    bool sortOrder = false;
    bool groupVideos = false;
    bool gumi = false;
    bool moreInfo = false;
    bool videos = false;
    bool photos = false;
    bool sessionFiles = false;
    std::optional<uint32_t> param1;
    std::optional<uint32_t> param2;
    bool pretty = false;
};

struct QueryOptions {
    std::string query;
    bool pretty = false;
};

// Prints the body as it is, in one line, or indented.
void printBody(const std::string& body, bool pretty) {
    const Json document = pretty ? Json::parse(body, nullptr, false) : Json();
    if (!pretty || document.is_discarded()) {
        std::puts(body.c_str());
    } else {
        std::puts(document.dump(4, ' ', false, Json::error_handler_t::replace).c_str());
    }
}

// Prints the response, or its body alone as one line of JSON or indented.
int printResponse(bool pretty, const std::function<int()>& producer) {
    const auto printed = printedBy(producer);
    if (!printed) {
        return fail("cannot take the response from standard output: %m");
    }
    const std::string& response = *printed;
    const size_t start = response.find("HTTP/1.1 ");
    const size_t header = response.find("\r\n\r\n", start);
    const bool isResponse = start != std::string::npos && header != std::string::npos;
    const int status = isResponse ? std::atoi(response.c_str() + response.find(' ', start)) : 0;
    const bool good = status == kHttpOk && !exchangeTrouble();
    if (!isResponse || (!printsJson() && !pretty)) {
        std::fputs(printsJson() ? "" : response.c_str(), stdout);
    } else if (good) {
        const size_t body = header + 4;
        printBody(response.substr(body, response.size() - body - 2), pretty);
    }
    if (good) {
        return kDone;
    }
    if (!isResponse) {
        return failExchange("the query has no response");
    }
    return fail(
        exchangeTrouble().value_or(Failure{"http_status",
                                           "the response has status " + std::to_string(status),
                                           "docs/http-interface.md tells what it means",
                                           {{"status", status}}}));
}

uint32_t optionIf(bool wanted, uint32_t option) {
    return wanted ? option : 0;
}

int paged(const PagedOptions& options) {
    const uint32_t listOptions = optionIf(options.sortOrder, LIST_OPTION_SORT_ORDER) |
                                 optionIf(options.groupVideos, LIST_OPTION_VIDEO_GROUPING) |
                                 optionIf(options.gumi, LIST_OPTION_INCLUDE_GUMI) |
                                 optionIf(options.moreInfo, LIST_OPTION_INCLUDE_MORE_INFO);
    const uint32_t queryOptions =
        optionIf(options.videos, QUERY_OPTION_VIDEO) |
        optionIf(options.photos, QUERY_OPTION_PHOTO) |
        optionIf(options.sessionFiles, RTOS_DB_QUERY_METADATA_SESSION_FILES);
    const uint32_t parameters[] = {options.param1.value_or(0), options.param2.value_or(0)};
    const int parameterCount = options.param2 ? 2 : options.param1 ? 1 : 0;
    const auto pages = static_cast<int>(std::min<uint32_t>(options.pages, INT_MAX));
    return printResponse(options.pretty, [&] {
        return dbGetPagedList(nullptr, pages, options.count, options.start, listOptions,
                              queryOptions, parameterCount, parameters);
    });
}

void addQueryCommand(CommandLine& line, const char* name, const char* help,
                     int (*produce)(void*, const char*)) {
    auto options = std::make_shared<QueryOptions>();
    line.add(name, help,
             [options, produce] {
                 return printResponse(options->pretty,
                                      [&] { return produce(nullptr, options->query.c_str()); });
             })
        .argument("QUERY", &options->query, kQuery, "The query string, without the ?")
        .flag("--pretty", &options->pretty, "Print the body alone, indented");
}

}  // namespace

void addResponseCommands(CommandLine& line) {
    addQueryCommand(line, "medialist", "Print the response to a media-list query",
                    generateMediaList);
    addQueryCommand(line, "metadata", "Print the response to a metadata query", generateMetadata);

    auto options = std::make_shared<PagedOptions>();
    line.add("paged", "Print a range of the database as a media list",
             [options] { return paged(*options); })
        .option("--start", "N", &options->start, "Begin with item N; the first is 0")
        .option("--count", "N", &options->count, "Items of a page (10)")
        .option("--pages", "N", &options->pages, "Fetch at most N pages")
        .flag("--sort-order", &options->sortOrder, "Set the list option sort_order")
        .flag("--group-videos", &options->groupVideos, "Set the list option video_grouping")
        .flag("--gumi", &options->gumi, "Set the list option include_gumi")
        .flag("--more-info", &options->moreInfo, "Set the list option include_more_info")
        .flag("--videos", &options->videos, "List videos")
        .flag("--photos", &options->photos, "List photos")
        .flag("--session", &options->sessionFiles, "List session files")
        .option("--param1", "N", &options->param1, "The first parameter of the command")
        .option("--param2", "N", &options->param2, "The second parameter of the command")
        .flag("--pretty", &options->pretty, "Print the body alone, indented");
}

}  // namespace mediactl

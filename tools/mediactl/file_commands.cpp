// info, gumi, set-status: questions about one file and the write of its upload status.
#include <algorithm>
#include <array>
#include <charconv>
#include <memory>
#include <vector>

#include "libvxMediaRTOSDB/src/exchange/rtos_connection_guard.h"
#include "tools/mediactl/command_line.h"
#include "tools/mediactl/exchange_watch.h"
#include "tools/mediactl/output.h"
#include "tools/mediactl/record_json.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/file_queries.h>
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/response_queries.h>

namespace mediactl {

namespace {

constexpr size_t kMaxHighlights = kResponseBufferSize / sizeof(u32le);

// Asks a response query on a connection of its own. ask: called with connection and buffer,
// returns the query's HTTP status.
template <typename Ask>
int askResponse(Ask ask) {
    RtosConnectionGuard connection;
    std::array<uint8_t, kResponseBufferSize> response;
    const bool answered =
        connection.result() >= 0 && ask(connection.get(), response.data()) == HTTP_OK;
    return answered && !exchangeTrouble() ? kDone : failExchange("the answer is no use");
}

// Asks whether the database knows the file: the direct queries do not tell why they fail.
int findFile(const std::string& path) {
    return askResponse([&](rtosConnection* connection, void* response) {
        const db_item_record* item = nullptr;
        return getContentInfoResponse(connection, directoryOf(path).c_str(), fileOf(path).c_str(),
                                      response, &item);
    });
}

// The answers of all queries about one file, each a member of the result.
class FileInfo {
  public:
    explicit FileInfo(const std::string& path) : mFs(directoryOf(path) + fileOf(path)) {
        mResult["file"] = path;
        addItem();
        addGumi();
        addMoreInfo();
    }

    [[nodiscard]] const Json& result() const { return mResult; }
    [[nodiscard]] int status() const { return mStatus; }

  private:
    bool succeeded(const char* query, int result) {
        if (mStatus == kDone && (result != 0 || exchangeTrouble())) {
            mStatus = failExchange(std::string(query) + " takes no answer");
        }
        return mStatus == kDone;
    }

    void addItem() {
        db_item_record item;
        if (!succeeded("getContentInfo", getContentInfo(mFs.c_str(), &item))) {
            return;
        }
        mResult["content"] = itemJson(item);
        if (isGroup(item.content_type)) {
            addGroup();
        }
        if (isVideo(item.content_type)) {
            addVideo();
        }
    }

    void addGroup() {
        db_item_record item;
        db_group_info group;
        std::array<uint8_t, kMemberMaskSize> mask;
        std::array<uint8_t, kMemberMaskSize> highlightMask;
        const int result =
            getGroupContentInfo(mFs.c_str(), &group, &item, mask.data(), highlightMask.data());
        if (!succeeded("getGroupContentInfo", result)) {
            return;
        }
        const bool hasHighlights = isPhotoGroup(item.content_type) && item.highlight_count != 0;
        mResult["group"] =
            groupJson(group, mask, hasHighlights ? highlightMask : std::span<const uint8_t>());
    }

    void addVideo() {
        db_video_specific_info video;
        std::array<uint32_t, kMaxHighlights> highlights;
        const int result =
            getVideoSpecificInfo(mFs.c_str(), &video, nullptr, highlights.data(), kMaxHighlights);
        if (!succeeded("getVideoSpecificInfo", result)) {
            return;
        }
        const size_t count = std::min<size_t>(video.highlight_count, kMaxHighlights);
        mResult["video"] = videoJson(video, std::span(highlights).first(count));
    }

    void addGumi() {
        db_gumi gumi;
        db_gumi parent;
        if (!succeeded("getFileGUMI", getFileGUMI(mFs.c_str(), &gumi, &parent))) {
            return;
        }
        mResult["gumi"] = gumiJson(gumi);
        mResult["parent_gumi"] = gumiJson(parent);
    }

    void addMoreInfo() {
        db_more_info info;
        if (succeeded("getMoreInfo", getMoreInfo(mFs.c_str(), &info))) {
            mResult["picture"] = moreInfoJson(info);
        }
    }

    std::string mFs;
    Json mResult = Json::object();
    int mStatus = kDone;
};

int info(const std::string& path) {
    const int found = findFile(path);
    if (found != kDone) {
        return found;
    }
    const FileInfo file(path);
    if (file.status() == kDone) {
        printResult(file.result());
    }
    return file.status();
}

int gumi(const std::string& digits) {
    db_gumi gumi;
    for (size_t i = 0; i < kGumiSize; ++i) {
        std::from_chars(&digits[2 * i], &digits[2 * i + 2], gumi.bytes[i], 16);
    }
    std::array<char, sizeof(db_file_name)> fs;
    const int result = getContentInfoByGUMI(&gumi, fs.data());
    if (result != 0 || exchangeTrouble()) {
        return failExchange("the answer names no file");
    }
    const auto name = std::span(fs);
    const std::string path =
        nameText(name.first(kDirNameSize)) + "/" + nameText(name.subspan(kDirNameSize));
    printResult({{"gumi", gumiJson(gumi)}, {"file", path}});
    return kDone;
}

int setStatus(const std::string& path, uint32_t uploadStatus) {
    const int status = askResponse([&](rtosConnection* connection, void* response) {
        return getWriteUploadStatusResponse(connection, directoryOf(path).c_str(),
                                            fileOf(path).c_str(), response, uploadStatus);
    });
    if (status == kDone) {
        printResult({{"file", path}, {"upload_status", uploadStatus}});
    }
    return status;
}

}  // namespace

void addFileCommands(CommandLine& line) {
    auto file = std::make_shared<std::string>();
    line.add("info", "Print all that the database tells about a file",
             [file] { return info(*file); })
        .argument("DIR/FILE", file.get(), kFile, "The file");

    auto digits = std::make_shared<std::string>();
    line.add("gumi", "Find the file that a GUMI identifies", [digits] { return gumi(*digits); })
        .argument("HEX", digits.get(), kGumi, "The GUMI");

    auto status = std::make_shared<uint32_t>();
    line.add("set-status", "Write the upload status of a file",
             [file, status] { return setStatus(*file, *status); })
        .argument("DIR/FILE", file.get(), kFile, "The file")
        .argument("N", status.get(), "The status");
}

}  // namespace mediactl

// info, gumi, set-status: questions about one file and the write of its upload status.
#include <algorithm>
#include <array>
#include <charconv>
#include <memory>
#include <vector>

#include "libvxMediaRTOSDB/src/exchange/rtos_connection_guard.h"
#include "tools/mediactl/argument_forms.h"
#include "tools/mediactl/command_line.h"
#include "tools/mediactl/output.h"
#include "tools/mediactl/record_json.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/file_queries.h>
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/response_queries.h>

namespace mediactl {

namespace {

constexpr size_t kMaxHighlights = kResponseBufferSize / sizeof(u32le);

const char* reason(int httpStatus) {
    switch (httpStatus) {
        case HTTP_NOT_FOUND:
            return "the database does not know it";
        case HTTP_UNAVAILABLE:
            return "the database is not ready";
        default:
            return "the query failed";
    }
}

// Asks a response query on a connection of its own. ask: called with connection and buffer,
// returns the query's HTTP status.
template <typename Ask>
int askResponse(const std::string& path, Ask ask) {
    RtosConnectionGuard connection;
    if (connection.result() < 0) {
        return fail("the media database cannot be reached (%d)", connection.result());
    }
    std::array<uint8_t, kResponseBufferSize> response;
    const int status = ask(connection.get(), response.data());
    return status == HTTP_OK ? kDone : fail("%s: %s (%d)", path.c_str(), reason(status), status);
}

// Asks whether the database knows the file: the direct queries do not tell why they fail.
int findFile(const std::string& path) {
    return askResponse(path, [&](rtosConnection* connection, void* response) {
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
        if (result != 0) {
            mStatus = fail("%s failed (%d)", query, result);
        }
        return result == 0;
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
    Json mResult;
    int mStatus = kDone;
};

int info(const std::string& path) {
    const int found = findFile(path);
    if (found != kDone) {
        return found;
    }
    const FileInfo file(path);
    printResult(file.result());
    return file.status();
}

int gumi(const std::string& digits) {
    db_gumi gumi;
    for (size_t i = 0; i < kGumiSize; ++i) {
        std::from_chars(&digits[2 * i], &digits[2 * i + 2], gumi.bytes[i], 16);
    }
    std::array<char, sizeof(db_file_name)> fs;
    const int result = getContentInfoByGUMI(&gumi, fs.data());
    if (result != 0) {
        return fail("%s: no file of this GUMI (%d)", digits.c_str(), result);
    }
    const auto name = std::span(fs);
    const std::string path =
        nameText(name.first(kDirNameSize)) + "/" + nameText(name.subspan(kDirNameSize));
    printResult({{"file", path}});
    return kDone;
}

int setStatus(const std::string& path, uint32_t uploadStatus) {
    return askResponse(path, [&](rtosConnection* connection, void* response) {
        return getWriteUploadStatusResponse(connection, directoryOf(path).c_str(),
                                            fileOf(path).c_str(), response, uploadStatus);
    });
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

// Any reply, to each query that asks for one and to the walker of pages. The input is one byte that
// chooses the query and the bytes of every reply.
#include <cstring>

#include "fuzz/checked_response.h"
#include <mediacheckd/platform/debug_level.h>
#include <mediacheckd/vxMediaRTOSDB/directory_scan.h>
#include <mediacheckd/vxMediaRTOSDB/file_queries.h>
#include <mediacheckd/vxMediaRTOSDB/page_walker.h>
#include <mediacheckd/vxMediaRTOSDB/response_queries.h>
#include <mediacheckd/vxMediaRTOSDB/zep_queries.h>

using namespace scripted;

namespace {

constexpr const char* kFile = "100VMEDIVXMF0012.MP4";

size_t delivered;
void takeItem(void*, zep_item_s* item) {
    require(std::strlen(item->dir_name) + std::strlen(item->file_name) <= 20);
    const size_t words = item->member_mask ? (item->last_number - item->first_number) / 32 + 1 : 0;
    for (size_t i = 0; i < 4 * words; ++i) {
        delivered += item->member_mask[i] & 1u;
    }
}
void takeFile(void*, char* directory, char* file) {
    delivered += std::strlen(directory) + std::strlen(file);
}

int fetch(decltype(dbGetZEPItems)* query) {
    uint32_t session = 0;
    uint32_t total = 0;
    return query(15, 0, nullptr, takeItem, nullptr, takeFile, nullptr, &session, &total);
}

void scan() {
    std::vector<db_scandir_entry> entries(10);
    auto count = static_cast<uint32_t>(entries.size());
    (void)dbScanDirectory("100VMEDI", entries.data(), &count, nullptr);
    require(count <= entries.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1 || size > 1501) {
        return 0;
    }
    const Bytes message(data + 1, data + size);
    reset();
    g_debug_level = 16;
    platform.answer = [&](const Bytes&) { return reply(message); };
    std::vector<uint8_t> mask(kMemberMaskSize);
    std::vector<uint8_t> highlightMask(kMemberMaskSize);
    std::vector<uint8_t> buffer(1500);
    std::vector<uint32_t> marks(4);
    std::vector<uint32_t> counts(32);
    db_item_record item;
    db_group_info group;
    db_video_specific_info video;
    db_gumi gumi{};
    db_gumi parent;
    db_more_info more;
    rtosConnection connection;
    const db_item_record* foundItem = nullptr;
    const db_video_specific_info* foundVideo = nullptr;
    char name[20];
    switch (data[0] % 10) {
        case 0:
            (void)processQueryResponse(message.data(), static_cast<int>(message.size()), 0,
                                       takeItem, nullptr, takeFile, nullptr);
            break;
        case 1:
            (void)fetch(dbGetZEPItems);
            break;
        case 2:
            (void)fetch(dbGetZEPSessionFileList);
            break;
        case 3:
            (void)dbGetMediaHistogram(nullptr, nullptr, counts.data());
            break;
        case 4:
            (void)getGroupContentInfo(kFile, &group, &item, mask.data(), highlightMask.data());
            break;
        case 5:
            (void)getVideoSpecificInfo(kFile, &video, &item, marks.data(), 4);
            break;
        case 6:
            (void)(getContentInfoByGUMI(&gumi, name) + getContentInfo(kFile, &item));
            break;
        case 7:
            (void)(getFileGUMI(kFile, &gumi, &parent) + getMoreInfo(kFile, &more));
            break;
        case 8:
            (void)getVideoSpecificInfoResponse(&connection, "100VMEDI", "VXMF0012.MP4",
                                               buffer.data(), &foundItem, &foundVideo);
            break;
        default:
            scan();
    }
    require(platform.opened == platform.closed);
    return 0;
}

#include <mediacheckd/vxMediaRTOSDB/file_queries.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <span>

#include "libvxMediaRTOSDB/src/files/direct_query.h"
#include "libvxMediaRTOSDB/src/records/member_mask.h"
#include "libvxMediaRTOSDB/src/records/name_fields.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

static_assert(kMemberMaskSize ==
              kResponseBufferSize - sizeof(db_item_response) - sizeof(db_group_info));

constexpr const char* kReceivedContentInfo = "getContentInfo got %d bytes\n";

constexpr DirectQuery kContentInfo = {
    .command = DB_CMD_CONTENT_INFO,
    .received = kReceivedContentInfo,
};
constexpr DirectQuery kGroupContentInfo = {
    .command = DB_CMD_GROUP_CONTENT_INFO,
    .received = "getGroupContentInfo got %d bytes\n",
    .accepts = isGroup,
    .refused = "struct db_content_type %d - must be group content for operation\n",
};
constexpr DirectQuery kVideoSpecificInfo = {
    .command = DB_CMD_VIDEO_SPECIFIC_INFO,
    .received = "getVideoSpecificInfo got %d bytes\n",
    .accepts = isVideo,
    .refused = "struct db_content_type %d - must be video for operation\n",
};
constexpr DirectQuery kContentInfoByGumi = {
    .command = DB_CMD_CONTENT_INFO_BY_GUMI,
    .received = kReceivedContentInfo,
};
constexpr DirectQuery kFileGumi = {
    .command = DB_CMD_FILE_GUMI,
    .received = kReceivedContentInfo,
    .sendFailed = " error on IPC send %d\n",
};
constexpr DirectQuery kMoreInfo = {
    .command = DB_CMD_MORE_INFO,
    .received = "getMoreInfo got %d bytes\n",
};

db_file_request fileRequest(const char* fs) {
    db_file_request request;
    fillField(request.file.dir_name, fs);
    fillField(request.file.file_name, fs + strnlen(fs, kDirNameSize));
    return request;
}

// Returns how many highlights are to be copied.
uint32_t highlightsWanted(const db_video_specific_info& info, const uint32_t* highlights,
                          uint32_t maximum) {
    const uint32_t count = info.highlight_count;
    if (count == 0) {
        UTIL_LOG(UTIL_LOG_DEBUG,
                 "highlights %p, maxNumberHighlightsExpected %d, vsi->highlight_count %d - "
                 "skipping copy\n",
                 highlights, signedWord(maximum), signedWord(count));
        return 0;
    }
    if (count > maximum) {
        UTIL_LOG(UTIL_LOG_DEBUG,
                 "maxNumberHighlightsExpected %d, vsi->highlight_count %d, only returning %d\n",
                 signedWord(maximum), signedWord(count), signedWord(maximum));
    }
    if (!highlights) {
        UTIL_LOG(UTIL_LOG_DEBUG, "highlights %p - skipping highlight copy\n", highlights);
        return 0;
    }
    return std::min(count, maximum);
}

using Mask = std::optional<std::span<const uint8_t>>;

// Reads the first size bytes of the mask that lies distance bytes ahead; none when they did not
// all come.
Mask readMask(RecordReader reader, uint64_t distance, uint64_t size) {
    if (!reader.readArray<uint8_t>(distance)) {
        return std::nullopt;
    }
    return reader.readArray<uint8_t>(size);
}

void copyMask(const Mask& mask, uint8_t* output) {
    if (mask) {
        std::copy(mask->begin(), mask->end(), output);
    }
}

}  // namespace

int getContentInfo(const char* fs, db_item_record* ci) {
    if (!fs || !ci) {
        UTIL_LOG(UTIL_LOG_ERROR, "Invalid input: fs = %p, ci = %p\n", fs, ci);
        return -1;
    }
    return directQuery<db_item_record>(kContentInfo, fileRequest(fs), [&](const auto& item, auto) {
        *ci = item;
        return true;
    });
}

int getGroupContentInfo(const char* fs, db_group_info* gci, db_item_record* ci, uint8_t* mask,
                        uint8_t* highlightMask) {
    if (!fs || !gci || !ci) {
        UTIL_LOG(UTIL_LOG_ERROR, "Invalid input: fs = %p, gci = %p, ci = %p\n", fs, gci, ci);
        return -1;
    }
    return directQuery<db_item_record, db_group_info>(
        kGroupContentInfo, fileRequest(fs),
        [&](const auto& item, const auto& group, RecordReader masks) {
            const bool hasMask = group.num_missing != 0;
            const uint64_t size = (group.last_number - group.first_number) / 8 + 1;
            Mask members;
            Mask highlights;
            if (mask && hasMask) {
                members = readMask(masks, 0, size);
                if (!members) {
                    return false;
                }
            }
            if (highlightMask && item.highlight_count != 0) {
                highlights = readMask(masks, hasMask ? maskSize(group) : 0, size);
                // A video's highlights need no mask: only photo groups always have one.
                if (!highlights && isPhotoGroup(item.content_type)) {
                    return false;
                }
            }
            *ci = item;
            *gci = group;
            copyMask(members, mask);
            copyMask(highlights, highlightMask);
            return true;
        });
}

int getVideoSpecificInfo(const char* fs, db_video_specific_info* vsi, db_item_record* ci,
                         uint32_t* highlights, uint32_t maxNumberHighlightsExpected) {
    if (!fs || !vsi) {
        UTIL_LOG(UTIL_LOG_ERROR, "Invalid input: fs = %p, vsi = %p\n", fs, vsi);
        return -1;
    }
    return directQuery<db_item_record, db_video_specific_info>(
        kVideoSpecificInfo, fileRequest(fs),
        [&](const auto& item, const auto& info, RecordReader times) {
            const auto values = times.readArray<u32le>(
                highlightsWanted(info, highlights, maxNumberHighlightsExpected));
            if (!values) {
                return false;
            }
            *vsi = info;
            if (ci) {
                *ci = item;
            }
            std::copy(values->begin(), values->end(), highlights);
            return true;
        });
}

int getContentInfoByGUMI(const db_gumi* gumi, char* fs) {
    if (!fs || !gumi) {
        UTIL_LOG(UTIL_LOG_ERROR, "Invalid input: fs = %p, gumi = %p\n", fs, gumi);
        return -1;
    }
    db_gumi_request request;
    request.gumi = *gumi;
    return directQuery<db_file_name>(kContentInfoByGumi, request, [&](const auto& name, auto) {
        std::memcpy(fs, &name, sizeof name);
        return true;
    });
}

int getFileGUMI(const char* fs, db_gumi* gumi, db_gumi* parentGumi) {
    if (!fs || !gumi) {
        UTIL_LOG(UTIL_LOG_ERROR, "Invalid input: fs = %p, gumi = %p\n", fs, gumi);
        return -1;
    }
    return directQuery<db_item_record, db_gumi>(
        kFileGumi, fileRequest(fs), [&](const auto& item, const auto& own, RecordReader rest) {
            *gumi = own;
            if (parentGumi) {
                const auto* parent = rest.read<db_gumi>();
                const bool hasParent = item.attributes & ITEM_ATTRIBUTE_PARENT_GUMI;
                *parentGumi = hasParent && parent ? *parent : db_gumi{};
            }
            return true;
        });
}

int getMoreInfo(const char* fs, db_more_info* mi) {
    if (!fs || !mi) {
        UTIL_LOG(UTIL_LOG_ERROR, "Invalid input: fs = %p, mi = %p\n", fs, mi);
        return -1;
    }
    return directQuery<db_more_info>(kMoreInfo, fileRequest(fs), [&](const auto& info, auto) {
        *mi = info;
        return true;
    });
}

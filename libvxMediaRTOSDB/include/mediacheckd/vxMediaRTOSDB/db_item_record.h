// The records that describe one media item: the item record itself and what may follow it.
#pragma once

#include <cstddef>
#include <cstdint>

#include <mediacheckd/vxMediaRTOSDB/db_requests.h>
#include <mediacheckd/vxMediaRTOSDB/little_endian.h>

enum DbContentType : uint32_t {
    DB_CONTENT_TYPE_SINGLE_VIDEO = 0,
    DB_CONTENT_TYPE_GROUPED_VIDEO = 1,
    DB_CONTENT_TYPE_CHAPTERED_VIDEO = 2,
    DB_CONTENT_TYPE_TIME_LAPSE_VIDEO = 3,
    DB_CONTENT_TYPE_SINGLE_PHOTO = 4,
    DB_CONTENT_TYPE_BURST = 5,
    DB_CONTENT_TYPE_TIME_LAPSE_PHOTO = 6,
    DB_CONTENT_TYPE_SESSION_FILE = 7,
    DB_CONTENT_TYPE_NIGHT_LAPSE_PHOTO = 8,
    DB_CONTENT_TYPE_NIGHT_PHOTO = 9,
    DB_CONTENT_TYPE_CONTINUOUS_PHOTO = 10,
    DB_CONTENT_TYPE_BURST_VIDEO = 12,
    DB_CONTENT_TYPE_LAST = 12,
    DB_CONTENT_TYPE_UNKNOWN_FILE = 0xFFFFFFFF,  // the file is not in the database
};

// Videos that are recorded as such, not made of a burst: what responses show as videos.
constexpr bool isOrdinaryVideo(uint32_t contentType) {
    return contentType <= DB_CONTENT_TYPE_TIME_LAPSE_VIDEO;
}

// Videos whose record carries video specific information, alone or for each member.
constexpr bool isVideo(uint32_t contentType) {
    return isOrdinaryVideo(contentType) || contentType == DB_CONTENT_TYPE_BURST_VIDEO;
}

constexpr bool isVideoGroup(uint32_t contentType) {
    return contentType == DB_CONTENT_TYPE_GROUPED_VIDEO ||
           contentType == DB_CONTENT_TYPE_CHAPTERED_VIDEO;
}

constexpr bool isPhotoGroup(uint32_t contentType) {
    return contentType == DB_CONTENT_TYPE_BURST ||
           contentType == DB_CONTENT_TYPE_TIME_LAPSE_PHOTO ||
           contentType == DB_CONTENT_TYPE_NIGHT_LAPSE_PHOTO ||
           contentType == DB_CONTENT_TYPE_CONTINUOUS_PHOTO;
}

constexpr bool isGroup(uint32_t contentType) {
    return isVideoGroup(contentType) || isPhotoGroup(contentType);
}

enum DbItemAttribute : uint32_t {
    ITEM_ATTRIBUTE_PARENT_GUMI = 1u << 0,
    ITEM_ATTRIBUTE_EIS = 1u << 1,
    ITEM_ATTRIBUTE_PTA = 7u << 2,  // any of the three
    ITEM_ATTRIBUTE_AUDIO_STEREO = 1u << 5,
    ITEM_ATTRIBUTE_AUDIO_WIND = 1u << 6,
    ITEM_ATTRIBUTE_AUDIO_AUTO = 1u << 7,
    ITEM_ATTRIBUTE_WDR = 1u << 8,
    ITEM_ATTRIBUTE_RAW = 1u << 9,
    ITEM_ATTRIBUTE_TR = 1u << 10,
    ITEM_ATTRIBUTE_MP = 1u << 11,
    ITEM_ATTRIBUTE_HDR = 1u << 12,
};

struct db_item_record {
    u32le content_type;  // DbContentType
    char dir_name[kDirNameSize];
    char file_name[kFileNameSize];
    u32le created;   // seconds since 1970
    u32le modified;  // seconds since 1970
    u32le highlight_count;
    u32le attributes;  // DbItemAttribute bits
    u32le upload_status;
    u64le size;   // bytes
    u32le score;  // the low 7 bits count
    uint8_t reserved1[4];
    u32le rotation;
    u32le field_of_view;
    uint8_t reserved2[8];
};
static_assert(sizeof(db_item_record) == 76 && alignof(db_item_record) == 1);
static_assert(offsetof(db_item_record, dir_name) == 4);
static_assert(offsetof(db_item_record, file_name) == 12);
static_assert(offsetof(db_item_record, created) == 24);
static_assert(offsetof(db_item_record, highlight_count) == 32);
static_assert(offsetof(db_item_record, attributes) == 36);
static_assert(offsetof(db_item_record, upload_status) == 40);
static_assert(offsetof(db_item_record, size) == 44);
static_assert(offsetof(db_item_record, score) == 52);
static_assert(offsetof(db_item_record, rotation) == 60);
static_assert(offsetof(db_item_record, field_of_view) == 64);

constexpr uint32_t itemScore(const db_item_record& item) {
    return item.score & 0x7Fu;
}

// Follows the item record of a group. A member mask follows it when num_missing is not 0; a
// highlight mask of the same size follows for a photo group whose highlight_count is not 0.
struct db_group_info {
    u32le group_number;  // for a chaptered video the file number
    u32le first_number;
    u32le last_number;
    u32le num_missing;
    u64le group_size;  // bytes of all members together
};
static_assert(sizeof(db_group_info) == 24 && alignof(db_group_info) == 1);
static_assert(offsetof(db_group_info, group_size) == 16);

// Follows the item record of a single video; highlight_count values of type u32le follow it.
struct db_video_specific_info {
    u32le ls;
    u32le duration_ms;
    u32le profile;
    u32le avc_profile;
    u32le highlight_count;
    u32le clip;  // non-zero for a clip
};
static_assert(sizeof(db_video_specific_info) == 24 && alignof(db_video_specific_info) == 1);
static_assert(offsetof(db_video_specific_info, highlight_count) == 16);

struct db_more_info {
    u32le width;
    u32le height;
    u32le frame_rate_numerator;
    u32le frame_rate_denominator;
    u32le is_progressive;
    u32le is_subsampled;
    u32le reserved;
};
static_assert(sizeof(db_more_info) == 28 && alignof(db_more_info) == 1);

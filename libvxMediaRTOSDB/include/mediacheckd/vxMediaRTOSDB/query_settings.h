// What a media-list or metadata query asks for, as its parser understood it.
#pragma once

#include <cstddef>
#include <cstdint>

#include <mediacheckd/vxMediaRTOSDB/db_requests.h>

// The data set that a query asks for.
enum DbFilter : uint32_t {
    eDBFILTER_T_ALL = 0,
    eDBFILTER_T_PHOTOS = 1,
    eDBFILTER_T_VIDEO = 2,
    eDBFILTER_T_CLIPS = 4,
    eDBFILTER_T_PHOTOCLIPS = 5,
    eDBFILTER_T_HIGHLIGHTS = 6,
    eDBFILTER_T_VIDEOHIGHLIGHTS = 7,
    eDBFILTER_T_PHOTOHIGHLIGHTS = 8,
    eDBFILTER_T_GROUPS = 10,
    eDBFILTER_T_PHOTOGROUPS = 11,
    eDBFILTER_T_RAW = 12,
    eDBFILTER_T_GUMI = 13,
    eDBFILTER_T_NONE = 14,
    eDBFILTER_T_UPLOAD = 15,
    eDBFILTER_T_UPLOAD_SET_STATUS = 16,
    eDBFILTER_T_GET_VIDEOINFO = 17,
    eDBFILTER_T_GET_DUR = 18,
    eDBFILTER_T_GET_V4INFO = 19,
    eDBFILTER_T_GET_V5INFO = 20,
    eDBFILTER_T_GET_UPLOAD = 21,
    eDBFILTER_T_SET_UPLOAD = 22,
};

// The JSON keys that a response may contain: the bits of a field mask.
enum MediaField : uint32_t {
    FIELD_NAME = 0x00000001,
    FIELD_MODIFIED = 0x00000002,
    FIELD_CREATED = 0x00000004,
    FIELD_SIZE = 0x00000008,
    FIELD_LS = 0x00000010,
    FIELD_CLIP = 0x00000020,
    FIELD_AVC_PROFILE = 0x00000040,
    FIELD_PROFILE = 0x00000080,
    FIELD_SCORE = 0x00000100,
    FIELD_HIGHLIGHT_COUNT = 0x00000200,
    FIELD_HIGHLIGHTS = 0x00000400,
    FIELD_GROUP = 0x00000800,
    FIELD_GUMI = 0x00001000,
    FIELD_PARENT_GUMI = 0x00002000,
    FIELD_DOES_NOT_EXIST = 0x00004000,
    FIELD_UPLOAD_STATUS = 0x00008000,
    FIELD_EIS = 0x00010000,
    FIELD_WDR = 0x00020000,
    FIELD_PTA = 0x00040000,
    FIELD_AUDIO_OPTION = 0x00080000,
    FIELD_RAW = 0x00100000,
    FIELD_TR = 0x00200000,
    FIELD_MP = 0x00400000,
    FIELD_DURATION = 0x00800000,
    FIELD_DIMENSIONS = 0x01000000,
    FIELD_FRAME_RATE = 0x02000000,
    FIELD_PROGRESSIVE = 0x04000000,
    FIELD_SUBSAMPLED = 0x08000000,
    FIELD_HDR = 0x10000000,
    FIELD_CONTENT_TYPE = 0x20000000,
    FIELD_ROTATION = 0x40000000,
    FIELD_FIELD_OF_VIEW = 0x80000000,
};

constexpr uint32_t kAllFields = 0xFFFFFFFF;
constexpr uint32_t kLegacyFields =
    FIELD_NAME | FIELD_MODIFIED | FIELD_SIZE | FIELD_LS | FIELD_GROUP;
constexpr uint32_t kMetadataFields =
    kAllFields & ~(FIELD_NAME | FIELD_MODIFIED | FIELD_DOES_NOT_EXIST);

constexpr size_t kMaxUnsupportedLength = 100;

// Lives for one request.
struct QuerySettings {
    uint32_t filter;              // DbFilter
    uint32_t rtosDBQueryOptions;  // DbQueryOption bits of the list request
    uint32_t newUploadStatus;     // to be written, for the two filters that set it
    char dirName[kDirNameSize + 1];
    char fileName[kFileNameSize + 1];
    uint32_t whitelistMask;                       // MediaField bits
    char unsupported[kMaxUnsupportedLength + 1];  // unknown field names, joined by ","
};

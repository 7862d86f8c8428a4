// The requests that the media database understands. A request is sent whole; its size is the size
// of its record. Names are not zero-terminated on the wire.
#pragma once

#include <cstddef>
#include <cstdint>

#include <mediacheckd/vxMediaRTOSDB/little_endian.h>

enum DbCommand : uint32_t {
    DB_CMD_LIST = 0,
    DB_CMD_CONTENT_INFO = 2,
    DB_CMD_GROUP_CONTENT_INFO = 3,
    DB_CMD_VIDEO_SPECIFIC_INFO = 4,
    DB_CMD_CONTENT_INFO_BY_GUMI = 6,
    DB_CMD_FILE_GUMI = 7,
    DB_CMD_MORE_INFO = 8,
    DB_CMD_WRITE_UPLOAD_STATUS = 9,
    DB_CMD_MEDIA_HISTOGRAM = 10,
    DB_CMD_LIST_WITH_PARAMETERS = 11,
    DB_CMD_NON_DB_SCANDIR = 12,
};

enum DbListOption : uint32_t {
    LIST_OPTION_SORT_ORDER = 1u << 0,
    LIST_OPTION_VIDEO_GROUPING = 1u << 1,
    LIST_OPTION_INCLUDE_GUMI = 1u << 2,
    LIST_OPTION_INCLUDE_MORE_INFO = 1u << 3,
};

// Which kinds of media a list query covers; the low byte of the word is always 0.
enum DbQueryOption : uint32_t {
    QUERY_OPTION_VIDEO = 0x100,
    QUERY_OPTION_PHOTO = 0x200,
    RTOS_DB_QUERY_METADATA_SESSION_FILES = 0x400,
    QUERY_OPTION_RAW = 0x800,
};

constexpr size_t kDirNameSize = 8;
constexpr size_t kFileNameSize = 12;
constexpr size_t kGumiSize = 16;

struct db_request_header {
    u32le command_type;
    u32le request_count;  // entries wanted; 1 for a single file
    u32le token;          // echoed by the response
};
static_assert(sizeof(db_request_header) == 12);

struct db_list_request {
    db_request_header header;
    u32le starting_index;
    u32le list_options;   // DbListOption bits
    u32le query_options;  // DbQueryOption bits
};
static_assert(sizeof(db_list_request) == 24);
static_assert(offsetof(db_list_request, starting_index) == 12);

struct db_list_with_parameters_request {
    db_list_request list;
    u32le param1;
    u32le param2;
};
static_assert(sizeof(db_list_with_parameters_request) == 32);

struct db_file_name {
    char dir_name[kDirNameSize];
    char file_name[kFileNameSize];
};
static_assert(sizeof(db_file_name) == 20);

struct db_file_request {
    db_request_header header;
    db_file_name file;
};
static_assert(sizeof(db_file_request) == 32);
static_assert(offsetof(db_file_request, file) == 12);

constexpr size_t kMaxFilesInRequest = 74;

// Asks about several files at once. Only request_count of the names are sent.
struct db_files_request {
    db_request_header header;
    db_file_name files[kMaxFilesInRequest];
};
static_assert(sizeof(db_files_request) == 1492);  // a message has at most 1500 bytes
static_assert(offsetof(db_files_request, files) == 12);

// Identifies one media item.
struct db_gumi {
    uint8_t bytes[kGumiSize];
};
static_assert(sizeof(db_gumi) == 16 && alignof(db_gumi) == 1);

struct db_gumi_request {
    db_request_header header;
    db_gumi gumi;
};
static_assert(sizeof(db_gumi_request) == 28);

struct db_upload_status_request {
    db_request_header header;
    db_file_name file;
    u32le upload_status;
};
static_assert(sizeof(db_upload_status_request) == 36);
static_assert(offsetof(db_upload_status_request, upload_status) == 32);

struct db_histogram_request {
    db_request_header header;
};
static_assert(sizeof(db_histogram_request) == 12);

struct db_scandir_request {
    db_request_header header;
    char dir_name[kDirNameSize];
};
static_assert(sizeof(db_scandir_request) == 20);

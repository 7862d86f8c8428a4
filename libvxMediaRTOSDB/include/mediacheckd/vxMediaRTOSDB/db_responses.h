// The responses of the media database. A response is one message; its length is the number of
// bytes received, and nothing beyond them is ever read.
#pragma once

#include <cstddef>
#include <cstdint>

#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>
#include <mediacheckd/vxMediaRTOSDB/db_requests.h>
#include <mediacheckd/vxMediaRTOSDB/little_endian.h>

// Every response is received into a buffer of this size.
constexpr size_t kResponseBufferSize = 1500;
constexpr size_t kHistogramBuckets = 32;

struct db_response_header {
    u32le command_type;  // echo of the request's
    u32le status;        // 0 for success
    u32le count_returned;
    u32le rtos_db_version;
    u32le token;  // echo of the request's
};
static_assert(sizeof(db_response_header) == 20 && alignof(db_response_header) == 1);

// Starts a page of the list query; the items follow it.
struct db_list_response_header {
    db_response_header header;
    u32le start_index;
    u32le list_options;
    u32le query_options;
    u32le total_entries;  // entries in the whole database that match the query
    u32le session_id;     // changes whenever the database does
};
static_assert(sizeof(db_list_response_header) == 40 && alignof(db_list_response_header) == 1);
static_assert(offsetof(db_list_response_header, total_entries) == 32);

struct db_histogram_response {
    db_response_header header;
    u32le buckets[kHistogramBuckets];
};
static_assert(sizeof(db_histogram_response) == 148);

// Answers DB_CMD_CONTENT_INFO, and starts the answers about a group or a video, whose records
// follow it.
struct db_item_response {
    db_response_header header;
    db_item_record item;
};
static_assert(sizeof(db_item_response) == 96);

struct db_file_gumi_response {
    db_response_header header;
    db_item_record item;
    db_gumi gumi;
    db_gumi parent_gumi;  // with ITEM_ATTRIBUTE_PARENT_GUMI only
};
static_assert(sizeof(db_file_gumi_response) == 128);
static_assert(offsetof(db_file_gumi_response, parent_gumi) == 112);

struct db_more_info_response {
    db_response_header header;
    db_more_info more_info;
};
static_assert(sizeof(db_more_info_response) == 48);

// Answers DB_CMD_CONTENT_INFO_BY_GUMI.
struct db_file_name_response {
    db_response_header header;
    db_file_name file;
};
static_assert(sizeof(db_file_name_response) == 40);

// Starts the first message of a directory scan in place of db_response_header.
struct db_scandir_response_header {
    u32le command_type;
    u32le status;
    u32le number_transfers;   // messages of the whole answer, this one included
    u32le number_file_names;  // entries of the whole answer
    u32le token;
};
static_assert(sizeof(db_scandir_response_header) == 20);

struct scandir_result_item {
    char file_name[kFileNameSize];
    u32le word1;
    u32le word2;
};
static_assert(sizeof(scandir_result_item) == 20);

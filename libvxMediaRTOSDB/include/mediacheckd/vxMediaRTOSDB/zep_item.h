// What the page fetches hand to their callbacks.
#pragma once

#include <stdint.h>

// One item of the media database, valid only during the callback that receives it. Items that are
// no group have group_number, first_number and last_number 0 and no member mask.
typedef struct zep_item_s {
    const char* gumi;         // 32 upper-case hexadecimal digits, or null
    const char* parent_gumi;  // the same form, or null
    uint32_t content_type;    // DbContentType
    uint32_t group_number;
    uint32_t first_number;
    uint32_t last_number;
    // One bit a member, the most significant bit of the first byte first, set when the member
    // exists; null when every member from first_number to last_number does.
    const uint8_t* member_mask;
    uint32_t upload_status;
    uint32_t highlight;     // highlight count
    uint32_t score;         // 0 to 127
    uint32_t timestamp;     // creation time, seconds since 1970
    uint32_t duration_s;    // rounded; for grouped videos the members' durations together
    uint32_t clip;          // 1 for a clip, else 0
    uint32_t reserved;      // 0
    uint64_t size_bytes;    // for a group the members' sizes together
    const char* dir_name;   // 8 characters and a terminating zero
    const char* file_name;  // 12 characters and a terminating zero
} zep_item_s;

#ifdef __cplusplus
extern "C" {
#endif

// Called once for each item.
typedef void (*zep_item_callback)(void* ctx, zep_item_s* item);

// Called after the item callback: once for an item that is no group, once for each present member
// of a group; never for a damaged group, whose numbers run backwards or over more than the 10,000
// that a file name can tell. Both names are zero-terminated and valid only during the call.
typedef void (*zep_file_callback)(void* ctx, char* dirName, char* fileName);
#ifdef __cplusplus
}
#endif

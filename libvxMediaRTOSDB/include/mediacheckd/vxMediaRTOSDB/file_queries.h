// Questions about one file, each on a connection of its own and without retry.
//
// fs: directory name (8 characters) directly followed by the file name (12 characters); a shorter
// text is taken as it is. An output that is marked optional may be null; everything else may not
// (-1). On any failure the outputs are left as they are.
//
// Each returns 0, the channel's negative result when no connection can be opened, or -1 when the
// exchange fails, the answer is too short or empty, or the file is of the wrong kind. A failure
// status or a wrong token is logged and the answer used.
#pragma once

#include <cstddef>
#include <cstdint>

#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>

// Bytes that each mask of getGroupContentInfo may fill.
constexpr size_t kMemberMaskSize = 1380;

extern "C" {
#pragma GCC visibility push(default)

// Fetches the item record of a file into ci.
[[nodiscard]] int getContentInfo(const char* fs, db_item_record* ci);

// Fetches the item record of a group into ci and its group information into gci.
// mask: optional; 1380 bytes, receives one bit a member, the most significant bit of the first
// byte first, when gci->num_missing is not 0.
// highlightMask: optional; 1380 bytes, receives a second mask of the same size when
// ci->highlight_count is not 0; for a group of videos only if it came, else it is left as it is.
[[nodiscard]] int getGroupContentInfo(const char* fs, db_group_info* gci, db_item_record* ci,
                                      uint8_t* mask, uint8_t* highlightMask);

// Fetches the video specific information of a video into vsi and its item record into ci
// (optional).
// highlights: optional; receives the first vsi->highlight_count highlights, at most
// maxNumberHighlightsExpected.
[[nodiscard]] int getVideoSpecificInfo(const char* fs, db_video_specific_info* vsi,
                                       db_item_record* ci, uint32_t* highlights,
                                       uint32_t maxNumberHighlightsExpected);

// Fetches the name of the file that a GUMI identifies.
// fs: 20 bytes, receives directory and file name without a terminating zero.
[[nodiscard]] int getContentInfoByGUMI(const db_gumi* gumi, char* fs);

// Fetches the GUMI of a file and its parent's (optional), all zero when it has no parent or the
// answer ended before it.
[[nodiscard]] int getFileGUMI(const char* fs, db_gumi* gumi, db_gumi* parentGumi);

// Fetches the picture geometry and frame rate of a file into mi.
[[nodiscard]] int getMoreInfo(const char* fs, db_more_info* mi);

#pragma GCC visibility pop
}

// The formatters of per-file metadata: each appends the keys of one record, as far as the field
// mask selects them, to the output's entry buffer.
//
// The output must be constructed. pPrepend is written before the first key, "," before each
// further one. A missing output or prefix ends the process. A missing record gives no key.
//
// Each returns 200, or 500 when a key, or an element of its list, did not fit; that one is left
// out, and the buffer starts anew behind it.
#pragma once

#include <cstdint>

#include <mediacheckd/vxMediaRTOSDB/db_item_record.h>
#include <mediacheckd/vxMediaRTOSDB/media_db_output.h>

extern "C" {
#pragma GCC visibility push(default)

// Writes the first keys of an object: there is no prefix.
[[nodiscard]] int formatContentInfo(vxMediaDBOutput* pOutput, uint32_t fieldMask,
                                    const db_item_record* pInfo);

// pVideoInfo: its highlights, at most 99 of them, must lie right behind it.
[[nodiscard]] int formatVideoInfo(vxMediaDBOutput* pOutput, uint32_t fieldMask,
                                  const char* pPrepend, const db_video_specific_info* pVideoInfo);

[[nodiscard]] int formatMoreInfo(vxMediaDBOutput* pOutput, uint32_t fieldMask, const char* pPrepend,
                                 const db_more_info* pMoreInfo);

// pPGUMI: may be absent. Without a GUMI it is not written either.
[[nodiscard]] int formatGUMI(vxMediaDBOutput* pOutput, uint32_t fieldMask, const char* pPrepend,
                             const db_gumi* pGUMI, const db_gumi* pPGUMI);

#pragma GCC visibility pop
}

// The classes of media that a sort order tells apart.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

enum MediaClass : int {
    MEDIA_CLASS_PHOTO = 0,
    MEDIA_CLASS_BURST = 1,
    MEDIA_CLASS_CONTINUOUS = 2,
    MEDIA_CLASS_TIME_LAPSE = 3,
    MEDIA_CLASS_VIDEO = 4,
    MEDIA_CLASS_USER_VIDEO_CLIP = 5,
    MEDIA_CLASS_AUTO_VIDEO_CLIP = 6,  // of no entry
    MEDIA_CLASS_SESSION = 7,
    MEDIA_CLASS_OTHER = 9,  // without a name
};

// Names of the classes in a sort-rules document, by code.
inline constexpr std::array<std::string_view, 8> kMediaClassNames = {
    "photo", "burst",           "continuous",      "time_lapse",
    "video", "user_video_clip", "auto_video_clip", "session"};

// Returns the media class of an entry with the given type and clip fields.
MediaClass mediaClass(uint32_t contentType, bool clip);

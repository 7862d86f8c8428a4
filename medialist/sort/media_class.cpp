#include "medialist/sort/media_class.h"

MediaClass mediaClass(uint32_t contentType, bool clip) {
    static constexpr std::array kClasses = {
        MEDIA_CLASS_VIDEO,       // single video
        MEDIA_CLASS_VIDEO,       // grouped video
        MEDIA_CLASS_VIDEO,       // chaptered video
        MEDIA_CLASS_TIME_LAPSE,  // time-lapse video
        MEDIA_CLASS_PHOTO,       // single photo
        MEDIA_CLASS_BURST,       // burst
        MEDIA_CLASS_TIME_LAPSE,  // time-lapse photos
        MEDIA_CLASS_SESSION,     // session file
        MEDIA_CLASS_TIME_LAPSE,  // night-lapse photos
        MEDIA_CLASS_PHOTO,       // night photo
        MEDIA_CLASS_CONTINUOUS,  // continuous photos
        MEDIA_CLASS_OTHER,       // unused
        MEDIA_CLASS_BURST,       // burst video
    };
    const MediaClass result =
        contentType < kClasses.size() ? kClasses[contentType] : MEDIA_CLASS_OTHER;
    return result == MEDIA_CLASS_VIDEO && clip ? MEDIA_CLASS_USER_VIDEO_CLIP : result;
}

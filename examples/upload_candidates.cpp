// Lists the files of the media that wait for upload: good photos and short videos that have not
// been uploaded, those with a highlight first, then the newest day first.
#include <mediacheckd/medialist/zep_media_list.h>

#include <cstdio>

int main() {
    std::vector<UploadRule> rules = {
        {.target = 1, .kind = UPLOAD_RULE_STATUS_0},
        {.kind = UPLOAD_RULE_PHOTO, .scoreMin = 30, .scoreMax = 127},
        {.kind = UPLOAD_RULE_VIDEO, .scoreMin = 0, .scoreMax = 127, .durationMax = 300},
    };
    ZEPMediaList list;
    const int matches = list.getMediaCount(rules);
    if (matches < 0) {
        std::fprintf(stderr, "the media database cannot be read (%d)\n", matches);
        return 1;
    }
    if (list.sort(R"({"sort_rules": ["hilighted_first", "date_by_day_newest_first"]})") != 0) {
        std::fprintf(stderr, "the sort rules are invalid\n");
        return 1;
    }

    std::printf("%d candidates\n", matches);
    MediaOutput item;
    for (; list.getNextMedia(&item, rules) == ZEPMediaList::kItem; item = {}) {
        for (const auto& file : item.files) {
            std::printf("  %s\n", file.c_str());
        }
    }
    return 0;
}

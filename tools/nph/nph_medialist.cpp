// nph-medialist: answers a media-list query.
#include "tools/nph/query_string.h"
#include <mediacheckd/vxMediaRTOSDB/media_list.h>

// The response tells how it went; to the server the program has done what it is for.
int main() {
    (void)generateMediaList(nullptr, queryString());
    return 0;
}

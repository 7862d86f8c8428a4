// nph-metadata: answers a metadata query.
#include "tools/nph/query_string.h"
#include <mediacheckd/vxMediaRTOSDB/media_metadata.h>

// The response tells how it went; to the server the program has done what it is for.
int main() {
    (void)generateMetadata(nullptr, queryString());
    return 0;
}

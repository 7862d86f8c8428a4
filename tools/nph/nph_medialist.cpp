// nph-medialist: answers a media-list query.
#include "tools/nph/cgi_program.h"
#include <mediacheckd/vxMediaRTOSDB/media_list.h>

int main(int argc, char** argv) {
    return runCgiProgram(argc, argv, "nph-medialist",
                         "Prints the HTTP response to a media-list query.", generateMediaList);
}

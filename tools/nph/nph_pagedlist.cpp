// nph-pagedlist: answers a query for a piece of the media list.
#include "tools/nph/cgi_program.h"
#include <mediacheckd/vxMediaRTOSDB/media_list.h>

int main(int argc, char** argv) {
    return runCgiProgram(argc, argv, "nph-pagedlist",
                         "Prints the HTTP response to a query for a piece of the media list.",
                         generateListPiece);
}

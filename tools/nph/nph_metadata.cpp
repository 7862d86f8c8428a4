// nph-metadata: answers a metadata query.
#include "tools/nph/cgi_program.h"
#include <mediacheckd/vxMediaRTOSDB/media_metadata.h>

int main(int argc, char** argv) {
    return runCgiProgram(argc, argv, "nph-metadata",
                         "Prints the HTTP response to a metadata query.", generateMetadata);
}

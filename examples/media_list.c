// Prints the camera's media list as an HTTP response, as a CGI program does.
//
// usage: media_list [QUERY]     for example: media_list 'f=video&fields=n,s,dur'
#include <stddef.h>
#include <mediacheckd/vxMediaRTOSDB/media_list.h>

int main(int argc, char** argv) {
    const char* query = argc > 1 ? argv[1] : "";
    return generateMediaList(NULL, query) == 0 ? 0 : 1;
}

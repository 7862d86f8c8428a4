// A recording as a typed value: a dict that holds a text, a number and a list.
#include <stdio.h>
#include <mediacheckd/vtl/dict.h>
#include <mediacheckd/vtl/list.h>

int main(void) {
    vtl_value* recording = vtl_dict_create();
    vtl_dict_set_string(recording, "name", "VXMF0004.MP4");
    vtl_dict_set_int(recording, "chapters", 3);

    vtl_value* highlights = vtl_list_create();
    vtl_list_append_int(highlights, 1500);
    vtl_list_append_int(highlights, 30250);
    // The dict gets a copy; the list stays ours.
    vtl_dict_set(recording, VTL_TYPE_STRING, "highlights", VTL_TYPE_LIST, highlights);
    vtl_destroy(highlights);

    char name[16] = "";
    char chapters[16] = "";
    vtl_value* marks = NULL;
    unsigned count = 0;
    vtl_dict_get_string(recording, "name", name, sizeof name);
    vtl_dict_get_string(recording, "chapters", chapters, sizeof chapters);
    vtl_dict_get_list(recording, "highlights", &marks);
    vtl_size(marks, &count);
    printf("%s has %s chapters and %u highlights\n", name, chapters, count);

    vtl_destroy(recording);
    return 0;
}

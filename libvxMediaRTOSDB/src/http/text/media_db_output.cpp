#include <mediacheckd/vxMediaRTOSDB/media_db_output.h>

#include <cstdlib>

#include "libvxMediaRTOSDB/src/http/text/text_buffer.h"
#include "libvxMediaRTOSDB/src/log/util_assert.h"
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

bool allocate(TextBufferKind kind, char** buffer, char** position) {
    *buffer = allocateText(kind);
    *position = *buffer;
    return *buffer;
}

void release(char** buffer, char** position) {
    std::free(*buffer);
    *buffer = nullptr;
    *position = nullptr;
}

}  // namespace

int vxMediaDBOutputCtor(vxMediaDBOutput* pOutput, void* outputHandle) {
    UTIL_ASSERT(pOutput);
    vxMediaDBOutput& output = *pOutput;
    output = {};
    output.outputHandle = outputHandle;
    if (!allocate(TextBufferKind::kPage, &output.localBuffer, &output.pagePosition)) {
        UTIL_LOG(UTIL_LOG_ERROR, "malloc localBuffer failed medialist\n");
    } else if (!allocate(TextBufferKind::kDirectory, &output.localDirectoryBuffer,
                         &output.directoryPosition)) {
        UTIL_LOG(UTIL_LOG_ERROR, "malloc localDirectoryBuffer failed medialist\n");
    } else if (!allocate(TextBufferKind::kEntry, &output.localEntryBuffer, &output.entryPosition)) {
        UTIL_LOG(UTIL_LOG_ERROR, "malloc localEntryBuffer failed medialist\n");
    } else {
        return 0;
    }
    vxMediaDBOutputDtor(pOutput);
    return -1;
}

void vxMediaDBOutputDtor(vxMediaDBOutput* pOutput) {
    release(&pOutput->localBuffer, &pOutput->pagePosition);
    release(&pOutput->localDirectoryBuffer, &pOutput->directoryPosition);
    release(&pOutput->localEntryBuffer, &pOutput->entryPosition);
}

#include <mediacheckd/vxMediaRTOSDB/media_db_output.h>

#include "libvxMediaRTOSDB/src/log/util_assert.h"
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

int vxMediaDBOutputCtor(vxMediaDBOutput* pOutput, void* outputHandle) {
    UTIL_ASSERT(pOutput);
    *pOutput = {};
    pOutput->outputHandle = outputHandle;
    if (!pOutput->localBuffer.allocate(TextBufferKind::kPage)) {
        UTIL_LOG(UTIL_LOG_ERROR, "malloc localBuffer failed medialist\n");
    } else if (!pOutput->localDirectoryBuffer.allocate(TextBufferKind::kDirectory)) {
        UTIL_LOG(UTIL_LOG_ERROR, "malloc localDirectoryBuffer failed medialist\n");
    } else if (!pOutput->localEntryBuffer.allocate(TextBufferKind::kEntry)) {
        UTIL_LOG(UTIL_LOG_ERROR, "malloc localEntryBuffer failed medialist\n");
    } else {
        return 0;
    }
    vxMediaDBOutputDtor(pOutput);
    return -1;
}

void vxMediaDBOutputDtor(vxMediaDBOutput* pOutput) {
    pOutput->localBuffer.release();
    pOutput->localDirectoryBuffer.release();
    pOutput->localEntryBuffer.release();
}

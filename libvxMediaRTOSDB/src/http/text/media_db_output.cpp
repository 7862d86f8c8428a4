#include <mediacheckd/vxMediaRTOSDB/media_db_output.h>

#include "libvxMediaRTOSDB/src/http/text/text_append.h"
#include "libvxMediaRTOSDB/src/log/util_assert.h"
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

int vxMediaDBOutputCtor(vxMediaDBOutput* pOutput, void* outputHandle) {
    UTIL_ASSERT(pOutput);
    *pOutput = {};
    pOutput->outputHandle = outputHandle;
    if (!allocateText(pOutput->localBuffer, TextBufferKind::kPage)) {
        UTIL_LOG(UTIL_LOG_ERROR, "malloc localBuffer failed medialist\n");
    } else if (!allocateText(pOutput->localDirectoryBuffer, TextBufferKind::kDirectory)) {
        UTIL_LOG(UTIL_LOG_ERROR, "malloc localDirectoryBuffer failed medialist\n");
    } else if (!allocateText(pOutput->localEntryBuffer, TextBufferKind::kEntry)) {
        UTIL_LOG(UTIL_LOG_ERROR, "malloc localEntryBuffer failed medialist\n");
    } else {
        return 0;
    }
    vxMediaDBOutputDtor(pOutput);
    return -1;
}

void vxMediaDBOutputDtor(vxMediaDBOutput* pOutput) {
    releaseText(pOutput->localBuffer);
    releaseText(pOutput->localDirectoryBuffer);
    releaseText(pOutput->localEntryBuffer);
}

#include <mediacheckd/vxMediaRTOSDB/model_number.h>

#include <cstring>

#include "vcore/base/signed_word.h"
#include <mediacheckd/platform/csi.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

enum : int { CAMERA_ID_ORVANE = 30 };
constexpr uint32_t kSettingSize = 1400;
constexpr int32_t kUnknown = -1;

int32_t g_modelNumber = kUnknown;

}  // namespace

int csiGetModelNumber() {
    if (g_modelNumber >= 0) {
        return g_modelNumber & 0xFF;
    }

    uint8_t value[kSettingSize] = {};
    uint32_t length = 0;
    UTIL_LOG(UTIL_LOG_INFO, "csi_get CSI_MODEL_NUMBER\n");
    const int result = csi_get(CSI_MODEL_NUMBER, kSettingSize, &length, value);
    if (result != 0) {
        UTIL_LOG(UTIL_LOG_ERROR, "csi_get csi err, %d - using model number CAMERA_ID_ORVANE\n",
                 result);
        return CAMERA_ID_ORVANE;
    }
    if (length == 0) {
        UTIL_LOG(UTIL_LOG_ERROR, "csi_get invalid len, %d - using model number CAMERA_ID_ORVANE\n",
                 signedWord(length));
        return CAMERA_ID_ORVANE;
    }
    std::memcpy(&g_modelNumber, value, sizeof g_modelNumber);
    UTIL_LOG(UTIL_LOG_INFO, "model_number, %d\n", g_modelNumber);
    return g_modelNumber & 0xFF;
}

int usesOneBasedChapters() {
    return countsChaptersFromOne(static_cast<uint32_t>(csiGetModelNumber()));
}

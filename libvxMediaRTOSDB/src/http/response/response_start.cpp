#include "libvxMediaRTOSDB/src/http/response/response_start.h"

#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

CardIdentity::CardIdentity() : mKnown(getCardIDStr(mText) == 0) {
    if (!mKnown) {
        UTIL_LOG(UTIL_LOG_ERROR, "getCardIDStr ret < 0");
    }
}

int statusAtStart(const RtosConnectionGuard& connection, const CardIdentity& identity) {
    if (!identity.known()) {
        return HTTP_NOT_FOUND;
    }
    return connection.result() < 0 ? HTTP_INTERNAL_ERROR : HTTP_OK;
}

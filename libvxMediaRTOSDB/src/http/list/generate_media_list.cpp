// The media list of one request: every page of the data set in one document.
#include "libvxMediaRTOSDB/src/http/list/file_groups.h"
#include "libvxMediaRTOSDB/src/http/list/gumi_list.h"
#include "libvxMediaRTOSDB/src/http/list/list_pages.h"
#include "libvxMediaRTOSDB/src/http/list/media_document.h"
#include "libvxMediaRTOSDB/src/http/query/settings_log.h"
#include "libvxMediaRTOSDB/src/http/response/http_output.h"
#include "libvxMediaRTOSDB/src/http/response/media_db_output_guard.h"
#include "libvxMediaRTOSDB/src/http/response/response_start.h"
#include "libvxMediaRTOSDB/src/log/elapsed_time.h"
#include "libvxMediaRTOSDB/src/log/util_assert.h"
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/media_list.h>
#include <mediacheckd/vxMediaRTOSDB/media_list_query.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

constexpr uint32_t kItemsPerRequest = 10;

ListPlan planOf(const QuerySettings& settings) {
    ListPlan plan = {};
    plan.firstRequest.list.header.command_type = DB_CMD_LIST;
    plan.firstRequest.list.header.request_count = kItemsPerRequest;
    plan.firstRequest.list.query_options = settings.rtosDBQueryOptions;
    plan.requestSize = sizeof plan.firstRequest.list;
    plan.maxRequests = UINT32_MAX;
    plan.fieldMask = settings.whitelistMask;
    return plan;
}

}  // namespace

int generateMediaList(void* outputHandle, const char* query) {
    UTIL_ASSERT(query);
    QuerySettings settings;
    int status = parseMediaListQuery(query, &settings);
    logSettings(settings);
    if (status != HTTP_OK) {
        UTIL_LOG(UTIL_LOG_ERROR, "parseMediaListQuery ret: %d, query:'%s'", status, query);
        return printErrorResponse(status);
    }
    if (settings.filter == eDBFILTER_T_GUMI) {
        return generateGumiList(outputHandle, query);
    }
    MediaDBOutputGuard output(outputHandle);
    if (output.result() < 0) {
        return printErrorResponse(HTTP_INTERNAL_ERROR);
    }

    const ElapsedTime elapsed;
    RtosConnectionGuard connection;
    const CardIdentity identity;
    FileGroups groups(output.get());
    status = statusAtStart(connection, identity);
    if (status == HTTP_OK) {
        status = listPages(connection.get(), planOf(settings), &groups);
        groups.leave();
        if (!groups.complete()) {
            status = HTTP_INTERNAL_ERROR;
        }
    }
    connection.close();

    printMediaDocument(status, {identity, settings.unsupported, groups.text(), ""});
    const ElapsedTime::Reading time = elapsed.read();
    UTIL_LOG(UTIL_LOG_DEBUG, "generateMediaList time %lu sec, %lu usec\n", time.seconds,
             time.microseconds);
    return finishResponse(status);
}

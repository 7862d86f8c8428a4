// A piece of the media list, from an item on, for a client that walks it.
#include <cstdlib>
#include <memory>

#include "libvxMediaRTOSDB/src/http/list/file_groups.h"
#include "libvxMediaRTOSDB/src/http/list/list_pages.h"
#include "libvxMediaRTOSDB/src/http/list/media_document.h"
#include "libvxMediaRTOSDB/src/http/response/http_output.h"
#include "libvxMediaRTOSDB/src/http/response/response_start.h"
#include "libvxMediaRTOSDB/src/http/text/text_buffer.h"
#include "libvxMediaRTOSDB/src/log/elapsed_time.h"
#include "libvxMediaRTOSDB/src/log/util_assert.h"
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/media_list.h>
#include <mediacheckd/vxMediaRTOSDB/query_settings.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

struct Free {
    void operator()(char* buffer) const { std::free(buffer); }
};

}  // namespace

int dbGetPagedList(void*, int maxRequests, uint32_t itemsPerRequest, uint32_t startingIndex,
                   uint32_t listOptions, uint32_t queryOptions, int parameterCount,
                   const uint32_t* parameters) {
    UTIL_ASSERT(parameterCount < 1 || parameters);
    const std::unique_ptr<char, Free> buffer(allocateText(TextBufferKind::kPage));
    if (!buffer) {
        UTIL_LOG(UTIL_LOG_ERROR, "malloc failed medialist\n");
        return printErrorResponse(HTTP_INTERNAL_ERROR);
    }

    const ElapsedTime elapsed;
    RtosConnectionGuard connection;
    const CardIdentity identity;
    char* position = buffer.get();
    TextBuffer page(TextBufferKind::kPage, buffer.get(), &position);
    FileGroups groups(&page);
    int status = connection.result() < 0 ? HTTP_INTERNAL_ERROR : HTTP_OK;
    if (status == HTTP_OK && maxRequests > 0) {
        ListPlan plan = {};
        db_list_request& list = plan.firstRequest.list;
        list.header.command_type = DB_CMD_LIST;
        list.header.request_count = itemsPerRequest;
        list.starting_index = startingIndex;
        list.list_options = listOptions;
        list.query_options = queryOptions;
        plan.requestSize = sizeof list;
        if (parameterCount > 0) {
            list.header.command_type = DB_CMD_LIST_WITH_PARAMETERS;
            plan.firstRequest.param1 = parameters[0];
            plan.firstRequest.param2 = parameterCount > 1 ? parameters[1] : 0;
            plan.requestSize = sizeof plan.firstRequest;
        }
        plan.maxRequests = static_cast<uint32_t>(maxRequests);
        plan.asksForAsManyAgain = true;
        plan.logsParameters = true;
        plan.fieldMask = kAllFields & ~FIELD_CLIP;
        plan.style = {.countsGroupHighlights = true, .memberSizeLast = true};
        status = listPages(connection.get(), plan, &groups);
    }
    connection.close();

    printMediaDocument(status, {identity, "", groups.text(), groups.closing()});
    const ElapsedTime::Reading time = elapsed.read();
    UTIL_LOG(UTIL_LOG_DEBUG, "dbGetPagedList time %lu sec, %lu usec\n", time.seconds,
             time.microseconds);
    return finishResponse(status);
}

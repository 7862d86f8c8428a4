// The media list of one request: every page of the data set in one document, or a piece of it,
// which tells where the next one starts, so that a client walks a card of any size.
#include <algorithm>

#include "libvxMediaRTOSDB/src/http/list/file_groups.h"
#include "libvxMediaRTOSDB/src/http/list/gumi_list.h"
#include "libvxMediaRTOSDB/src/http/list/list_pages.h"
#include "libvxMediaRTOSDB/src/http/list/media_document.h"
#include "libvxMediaRTOSDB/src/http/query/list_piece_query.h"
#include "libvxMediaRTOSDB/src/http/query/settings_log.h"
#include "libvxMediaRTOSDB/src/http/response/http_output.h"
#include "libvxMediaRTOSDB/src/http/response/response_start.h"
#include "libvxMediaRTOSDB/src/http/text/media_db_output_guard.h"
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

ListPlan planOf(const ListPieceQuery& piece) {
    ListPlan plan = planOf(piece.settings);
    db_list_request& list = plan.firstRequest.list;
    list.header.request_count = std::min(piece.count, kItemsPerRequest);
    list.starting_index = piece.start;
    if (piece.from != 0 || piece.to != 0) {
        list.header.command_type = DB_CMD_LIST_WITH_PARAMETERS;
        plan.firstRequest.param1 = piece.from;
        plan.firstRequest.param2 = piece.to;
        plan.requestSize = sizeof plan.firstRequest;
    }
    plan.maxItems = piece.count;
    plan.asksForAsManyAgain = true;
    return plan;
}

// isPiece: the document tells how far the list has come.
int respond(void* outputHandle, const ListPlan& plan, const QuerySettings& settings, bool isPiece,
            const char* timeFormat) {
    MediaDBOutputGuard output(outputHandle);
    if (output.result() < 0) {
        return printErrorResponse(HTTP_INTERNAL_ERROR);
    }

    const ElapsedTime elapsed;
    RtosConnectionGuard connection;
    const CardIdentity identity;
    OutputTexts texts(*output.get());
    FileGroups groups(&texts);
    ListProgress progress = {};
    int status = statusAtStart(connection, identity);
    if (status == HTTP_OK) {
        status = listPages(connection.get(), plan, &groups, &progress);
        groups.leave();
        if (!groups.complete()) {
            status = HTTP_INTERNAL_ERROR;
        }
    }
    connection.close();

    printMediaDocument(status, {identity, settings.unsupported, groups.text(), "",
                                isPiece ? std::optional(progress) : std::nullopt});
    const ElapsedTime::Reading time = elapsed.read();
    UTIL_LOG(UTIL_LOG_DEBUG, timeFormat, time.seconds, time.microseconds);
    return finishResponse(status);
}

// Logs what was asked for and why it is refused, if it is. Returns the status.
int checkQuery(int status, const char* refusalFormat, const QuerySettings& settings,
               const char* query) {
    logSettings(settings);
    if (status != HTTP_OK) {
        UTIL_LOG(UTIL_LOG_ERROR, refusalFormat, status, query);
    }
    return status;
}

}  // namespace

int generateMediaList(void* outputHandle, const char* query) {
    UTIL_ASSERT(query);
    QuerySettings settings;
    const int status = checkQuery(parseMediaListQuery(query, &settings),
                                  "parseMediaListQuery ret: %d, query:'%s'", settings, query);
    if (status != HTTP_OK) {
        return printErrorResponse(status);
    }
    if (settings.filter == eDBFILTER_T_GUMI) {
        return generateGumiList(outputHandle, query);
    }
    return respond(outputHandle, planOf(settings), settings, false,
                   "generateMediaList time %lu sec, %lu usec\n");
}

int generateListPiece(void* outputHandle, const char* query) {
    UTIL_ASSERT(query);
    ListPieceQuery piece;
    const int status = checkQuery(parseListPieceQuery(query, &piece),
                                  "parseListPieceQuery ret: %d, query:'%s'", piece.settings, query);
    if (status != HTTP_OK) {
        return printErrorResponse(status);
    }
    return respond(outputHandle, planOf(piece), piece.settings, true,
                   "generateListPiece time %lu sec, %lu usec\n");
}

// A piece of the media list, which tells where the next one starts: a client walks a card of any
// size.
#include <algorithm>

#include "libvxMediaRTOSDB/src/http/list/file_groups.h"
#include "libvxMediaRTOSDB/src/http/list/list_pages.h"
#include "libvxMediaRTOSDB/src/http/list/media_document.h"
#include "libvxMediaRTOSDB/src/http/query/list_piece_query.h"
#include "libvxMediaRTOSDB/src/http/query/settings_log.h"
#include "libvxMediaRTOSDB/src/http/response/http_output.h"
#include "libvxMediaRTOSDB/src/http/response/media_db_output_guard.h"
#include "libvxMediaRTOSDB/src/http/response/response_start.h"
#include "libvxMediaRTOSDB/src/log/util_assert.h"
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/media_list.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

constexpr uint32_t kItemsPerRequest = 10;

ListPlan planOf(const ListPieceQuery& piece) {
    ListPlan plan = {};
    db_list_request& list = plan.firstRequest.list;
    list.header.command_type = DB_CMD_LIST;
    list.header.request_count = std::min(piece.count, kItemsPerRequest);
    list.starting_index = piece.start;
    list.query_options = piece.settings.rtosDBQueryOptions;
    plan.requestSize = sizeof list;
    if (piece.from != 0 || piece.to != 0) {
        list.header.command_type = DB_CMD_LIST_WITH_PARAMETERS;
        plan.firstRequest.param1 = piece.from;
        plan.firstRequest.param2 = piece.to;
        plan.requestSize = sizeof plan.firstRequest;
        plan.logsParameters = true;
    }
    plan.maxRequests = UINT32_MAX;
    plan.maxItems = piece.count;
    plan.asksForAsManyAgain = true;
    plan.fieldMask = piece.settings.whitelistMask;
    return plan;
}

}  // namespace

int generateListPiece(void* outputHandle, const char* query) {
    UTIL_ASSERT(query);
    ListPieceQuery piece;
    int status = parseListPieceQuery(query, &piece);
    logSettings(piece.settings);
    if (status != HTTP_OK) {
        UTIL_LOG(UTIL_LOG_ERROR, "parseListPieceQuery ret: %d, query:'%s'", status, query);
        return printErrorResponse(status);
    }
    MediaDBOutputGuard output(outputHandle);
    if (output.result() < 0) {
        return printErrorResponse(HTTP_INTERNAL_ERROR);
    }

    RtosConnectionGuard connection;
    const CardIdentity identity;
    FileGroups groups(output.get());
    ListProgress progress = {};
    status = statusAtStart(connection, identity);
    if (status == HTTP_OK) {
        status = listPages(connection.get(), planOf(piece), &groups, &progress);
        groups.leave();
        if (!groups.complete()) {
            status = HTTP_INTERNAL_ERROR;
        }
    }
    connection.close();
    printMediaDocument(status, {identity, piece.settings.unsupported, groups.text(), "", progress});
    return finishResponse(status);
}

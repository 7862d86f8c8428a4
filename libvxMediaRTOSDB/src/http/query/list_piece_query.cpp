#include "libvxMediaRTOSDB/src/http/query/list_piece_query.h"

#include "libvxMediaRTOSDB/src/http/query/query_value.h"
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/media_list_query.h>
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

// So many objects of files fit into a page buffer, groups with long lists of numbers aside.
constexpr uint32_t kMaxCount = 200;

struct NumberKey {
    const char* name;
    uint32_t ListPieceQuery::*number;
};

constexpr NumberKey kNumbers[] = {
    {"start", &ListPieceQuery::start},
    {"count", &ListPieceQuery::count},
    {"from", &ListPieceQuery::from},
    {"to", &ListPieceQuery::to},
};

}  // namespace

int parseListPieceQuery(const char* query, ListPieceQuery* piece) {
    *piece = {};
    int status = parseMediaListQuery(query, &piece->settings);
    if (status == HTTP_OK && piece->settings.filter == eDBFILTER_T_GUMI) {
        UTIL_LOG(UTIL_LOG_ERROR, "a gumi list has no pieces\n");
        status = HTTP_BAD_REQUEST;
    }
    for (const NumberKey& each : kNumbers) {
        if (status == HTTP_OK) {
            const QueryKey key = {
                .name = each.name, .empty = kFieldEmpty, .repeated = kFieldRepeated};
            status = readQueryNumber(query, key, &(piece->*each.number));
        }
    }
    if (status == HTTP_OK && (piece->count == 0 || piece->count > kMaxCount)) {
        UTIL_LOG(UTIL_LOG_ERROR, "count must be 1 to %d\n", static_cast<int>(kMaxCount));
        status = HTTP_BAD_REQUEST;
    }
    return status;
}

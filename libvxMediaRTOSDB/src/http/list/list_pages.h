// The page loop of the media lists: fetches the pages of a list query and writes their items.
#pragma once

#include <cstdint>

#include "libvxMediaRTOSDB/src/http/list/file_groups.h"
#include "libvxMediaRTOSDB/src/http/list/item_keys.h"
#include <mediacheckd/vxMediaRTOSDB/db_requests.h>
#include <mediacheckd/vxMediaRTOSDB/rtos_connection.h>

// What a list asks for and how it writes it.
struct ListPlan {
    db_list_with_parameters_request firstRequest;  // its token is filled in when it is sent
    int requestSize;                               // bytes of the request that are sent
    uint32_t maxRequests;
    uint32_t maxItems;        // of the database, listed or not; 0 for all
    bool asksForAsManyAgain;  // after a smaller request; else never for more than the one before
    bool logsParameters;      // of each request
    uint32_t fieldMask;       // MediaField bits
    ListStyle style;
};

// How far a list has come.
struct ListProgress {
    uint64_t nextIndex;  // of the first item that was not asked for
    uint32_t totalEntries;
    uint32_t sessionId;
};

// Fetches and writes the list. An exchange that fails, or whose page makes no sense, is repeated up
// to 10 times after a pause of 100 ms; each time the list starts anew. A page makes no sense when
// it is too short for its header or its first item, has an item of no known kind, or has no item
// although more may be asked for. A damaged group, or one whose masks no response can hold, is
// logged and listed with the numbers that came. groups: receives the items whose kind the query
// options select; the last group stays open. progress: may be null; receives what the last page
// told. Returns HTTP_OK, or HTTP_INTERNAL_ERROR when the database or the space for the list fail,
// or when the list has not ended after 262,144 items (2^18), listed or not: more than a card can
// hold.
[[nodiscard]] int listPages(rtosConnection* connection, const ListPlan& plan, FileGroups* groups,
                            ListProgress* progress = nullptr);

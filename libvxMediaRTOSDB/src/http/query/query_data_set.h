// The key of a query that names the data set.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "libvxMediaRTOSDB/src/http/query/query_value.h"
#include <mediacheckd/vxMediaRTOSDB/query_settings.h>

// A value of the key and what it asks for.
struct DataSet {
    std::string_view value;
    DbFilter filter;
    uint32_t queryOptions = 0;
};

// Sets filter and rtosDBQueryOptions; leaves them when the key may be absent and is.
// Returns HTTP_OK, or the status of the check that failed, which is logged: HTTP_NOT_IMPLEMENTED
// when the value is none of the data sets.
[[nodiscard]] int parseDataSet(std::string_view query, const QueryKey& key,
                               std::span<const DataSet> dataSets, QuerySettings* pSettings);

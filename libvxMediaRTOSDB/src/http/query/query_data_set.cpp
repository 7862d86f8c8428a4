#include "libvxMediaRTOSDB/src/http/query/query_data_set.h"

#include <algorithm>

#include <mediacheckd/vxMediaRTOSDB/http_status.h>

int parseDataSet(std::string_view query, const QueryKey& key, std::span<const DataSet> dataSets,
                 QuerySettings* pSettings) {
    char buffer[kQueryValueSize];
    const QueryValue value = readQueryValue(query, key, buffer);
    if (value.status != HTTP_OK || value.text.empty()) {
        return value.status;
    }
    const auto dataSet = std::ranges::find(dataSets, value.text, &DataSet::value);
    if (dataSet == dataSets.end()) {
        return rejectValue(HTTP_NOT_IMPLEMENTED, "%s=%s not implemented\n", key, value);
    }
    pSettings->filter = dataSet->filter;
    pSettings->rtosDBQueryOptions = dataSet->queryOptions;
    return checkNotRepeated(query, key);
}

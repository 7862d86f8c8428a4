// What a web server tells a CGI program.
#pragma once

#include <cstdlib>

// The query of the request, "" when it has none.
inline const char* queryString() {
    const char* query = std::getenv("QUERY_STRING");
    return query ? query : "";
}

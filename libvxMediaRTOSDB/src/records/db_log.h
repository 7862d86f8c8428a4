// Logs the fields of requests and response headers, one a line, at UTIL_LOG_DEBUG.
#pragma once

#include <mediacheckd/vxMediaRTOSDB/db_requests.h>
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>

void logRequest(const db_request_header& request);
inline void logRequest(const db_histogram_request& request) {
    logRequest(request.header);
}
void logRequest(const db_list_request& request);
void logRequest(const db_list_with_parameters_request& request);
void logRequest(const db_file_request& request);
void logRequest(const db_upload_status_request& request);
void logRequest(const db_scandir_request& request);

void logResponse(const db_response_header& response);
void logResponse(const db_list_response_header& response);
void logResponse(const db_scandir_response_header& response);

#include "libvxMediaRTOSDB/src/records/db_log.h"

#include <cstdint>

#include "libvxMediaRTOSDB/src/records/name_fields.h"
#include "vcore/base/signed_word.h"
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace {

int flag(uint32_t word, uint32_t bit) {
    return (word & bit) != 0;
}

void logCommandAndCount(const db_request_header& request) {
    UTIL_LOG(UTIL_LOG_DEBUG, "Request: command_type %d\n", signedWord(request.command_type));
    UTIL_LOG(UTIL_LOG_DEBUG, "         request_count %d\n", signedWord(request.request_count));
}

void logFileName(const db_file_name& file) {
    UTIL_LOG(UTIL_LOG_DEBUG, "         dir_name %s\n", terminated(file.dir_name).data());
    UTIL_LOG(UTIL_LOG_DEBUG, "         file_name %s\n", terminated(file.file_name).data());
}

}  // namespace

void logRequest(const db_request_header& request) {
    logCommandAndCount(request);
    UTIL_LOG(UTIL_LOG_DEBUG, "         token 0x%08X\n", uint32_t{request.token});
}

void logRequest(const db_list_request& request) {
    logRequest(request.header);
    UTIL_LOG(UTIL_LOG_DEBUG, "         starting_index %d\n", signedWord(request.starting_index));
    UTIL_LOG(UTIL_LOG_DEBUG, "         list_options sort_order %d\n",
             flag(request.list_options, LIST_OPTION_SORT_ORDER));
    UTIL_LOG(UTIL_LOG_DEBUG, "         list_options video_grouping %d\n",
             flag(request.list_options, LIST_OPTION_VIDEO_GROUPING));
    UTIL_LOG(UTIL_LOG_DEBUG, "         list_options include_gumi %d\n",
             flag(request.list_options, LIST_OPTION_INCLUDE_GUMI));
    UTIL_LOG(UTIL_LOG_DEBUG, "         list_options include_more_info %d\n",
             flag(request.list_options, LIST_OPTION_INCLUDE_MORE_INFO));
    UTIL_LOG(UTIL_LOG_DEBUG, "         query_options 0x%08X\n", uint32_t{request.query_options});
    UTIL_LOG(UTIL_LOG_DEBUG, "         query_options RTOS_DB_QUERY_METADATA_SESSION_FILES: %d\n",
             flag(request.query_options, RTOS_DB_QUERY_METADATA_SESSION_FILES));
}

void logRequest(const db_list_with_parameters_request& request) {
    logRequest(request.list);
    UTIL_LOG(UTIL_LOG_DEBUG, "         param1 0x%08X\n", uint32_t{request.param1});
    UTIL_LOG(UTIL_LOG_DEBUG, "         param2 0x%08X\n", uint32_t{request.param2});
}

void logRequest(const db_file_request& request) {
    logRequest(request.header);
    logFileName(request.file);
}

void logRequest(const db_upload_status_request& request) {
    logRequest(request.header);
    logFileName(request.file);
    UTIL_LOG(UTIL_LOG_DEBUG, "         upload_status %lu\n",
             static_cast<unsigned long>(request.upload_status));
}

void logRequest(const db_scandir_request& request) {
    logCommandAndCount(request.header);
}

void logResponse(const db_response_header& response) {
    UTIL_LOG(UTIL_LOG_DEBUG, "ResponseHeader: command_type %d\n",
             signedWord(response.command_type));
    UTIL_LOG(UTIL_LOG_DEBUG, "                status %d\n", signedWord(response.status));
    UTIL_LOG(UTIL_LOG_DEBUG, "                count_returned %d\n",
             signedWord(response.count_returned));
    UTIL_LOG(UTIL_LOG_DEBUG, "                rtos_db_version %d\n",
             signedWord(response.rtos_db_version));
    UTIL_LOG(UTIL_LOG_DEBUG, "                token 0x%08X\n", uint32_t{response.token});
}

void logResponse(const db_list_response_header& response) {
    logResponse(response.header);
    UTIL_LOG(UTIL_LOG_DEBUG, "                start_index %d\n", signedWord(response.start_index));
    UTIL_LOG(UTIL_LOG_DEBUG, "                list_options sort_order %d\n",
             flag(response.list_options, LIST_OPTION_SORT_ORDER));
    UTIL_LOG(UTIL_LOG_DEBUG, "                list_options video_grouping %d\n",
             flag(response.list_options, LIST_OPTION_VIDEO_GROUPING));
    UTIL_LOG(UTIL_LOG_DEBUG, "                list_options include_gumi %d\n",
             flag(response.list_options, LIST_OPTION_INCLUDE_GUMI));
    UTIL_LOG(UTIL_LOG_DEBUG, "                list_options include_more_info %d\n",
             flag(response.list_options, LIST_OPTION_INCLUDE_MORE_INFO));
    UTIL_LOG(UTIL_LOG_DEBUG, "                query_options 0x%08X\n",
             uint32_t{response.query_options});
    UTIL_LOG(UTIL_LOG_DEBUG, "                total_entries %d\n",
             signedWord(response.total_entries));
    UTIL_LOG(UTIL_LOG_DEBUG, "                session_id 0x%08X\n", uint32_t{response.session_id});
}

void logResponse(const db_scandir_response_header& response) {
    UTIL_LOG(UTIL_LOG_DEBUG, "ResponseHeader: status %d\n", signedWord(response.status));
    UTIL_LOG(UTIL_LOG_DEBUG, "                number_file_names %d\n",
             signedWord(response.number_file_names));
    UTIL_LOG(UTIL_LOG_DEBUG, "                number_transfers %d\n",
             signedWord(response.number_transfers));
}

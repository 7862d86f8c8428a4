// Every argument that a function of the library requires: without it the process ends.
#include <gtest/gtest.h>

#include <tuple>
#include <type_traits>

#include <mediacheckd/vxMediaRTOSDB/media_formatters.h>
#include <mediacheckd/vxMediaRTOSDB/media_list.h>
#include <mediacheckd/vxMediaRTOSDB/media_list_query.h>
#include <mediacheckd/vxMediaRTOSDB/media_metadata.h>
#include <mediacheckd/vxMediaRTOSDB/metadata_query.h>
#include <mediacheckd/vxMediaRTOSDB/query_status.h>
#include <mediacheckd/vxMediaRTOSDB/response_queries.h>
#include <mediacheckd/vxMediaRTOSDB/rtos_connection.h>

namespace {

// Calls the function with each of the required arguments in turn null, or 0.
template <size_t... required, typename Result, typename... Arguments>
void endsWithout(const char* name, Result (*function)(Arguments...),
                 std::type_identity_t<Arguments>... arguments) {
    const auto check = [&](auto without) {
        std::tuple<Arguments...> given{arguments...};
        std::get<decltype(without)::value>(given) = {};
        EXPECT_EXIT((void)std::apply(function, given), testing::ExitedWithCode(255), "")
            << name << " without argument " << without;
    };
    (check(std::integral_constant<size_t, required>{}), ...);
}

TEST(RequiredArguments, EndTheProcessWhereTheyAreMissing) {
    rtosConnection connection{};
    vxMediaDBOutput output{};
    QuerySettings settings{};
    settings.filter = eDBFILTER_T_GET_VIDEOINFO;
    char bytes[1500];
    const db_item_record* item;
    const db_gumi* gumi;
    const db_more_info* more;
    const db_video_specific_info* video;

    endsWithout<0, 1, 2>("rtosConnectionRecv", rtosConnectionRecv, &connection, bytes, 1500);
    endsWithout<0, 1, 3>("rtosCall", rtosCall, &connection, bytes, 12, bytes);
    EXPECT_EXIT((void)rtosConnectionSend(&connection, bytes, -1), testing::ExitedWithCode(255), "");

    endsWithout<0, 1>("parseMediaListQuery", parseMediaListQuery, "", &settings);
    endsWithout<0, 1>("parseMetadataQuery", parseMetadataQuery, "", &settings);
    endsWithout<0, 2>("parseQueryStatus", parseQueryStatus, "", 0, &settings);
    endsWithout<1>("generateMediaList", generateMediaList, nullptr, "");
    endsWithout<1>("generateMetadata", generateMetadata, nullptr, "");
    endsWithout<7>("dbGetPagedList", dbGetPagedList, nullptr, 1, 1, 0, 0, 0, 1, nullptr);

    endsWithout<0>("vxMediaDBOutputCtor", vxMediaDBOutputCtor, &output, nullptr);
    endsWithout<0>("formatContentInfo", formatContentInfo, &output, 0, nullptr);
    endsWithout<0, 2>("formatVideoInfo", formatVideoInfo, &output, 0, ",", nullptr);
    endsWithout<0, 2>("formatMoreInfo", formatMoreInfo, &output, 0, ",", nullptr);
    endsWithout<0, 2>("formatGUMI", formatGUMI, &output, 0, ",", nullptr, nullptr);
    endsWithout<0, 1, 2>("generateMetadataVideoInfo", generateMetadataVideoInfo, &output,
                         &connection, &settings);

    endsWithout<0, 1, 2, 3, 4>("getContentInfoResponse", getContentInfoResponse, &connection, "d",
                               "f", bytes, &item);
    endsWithout<4, 5>("getVideoSpecificInfoResponse", getVideoSpecificInfoResponse, &connection,
                      "d", "f", bytes, &item, &video);
    endsWithout<4>("getMoreInfoResponse", getMoreInfoResponse, &connection, "d", "f", bytes, &more);
    endsWithout<4, 5, 6>("getFileGUMIResponse", getFileGUMIResponse, &connection, "d", "f", bytes,
                         &item, &gumi, &gumi);
    endsWithout<0, 1, 2, 3>("getWriteUploadStatusResponse", getWriteUploadStatusResponse,
                            &connection, "d", "f", bytes, 1);
}

}  // namespace

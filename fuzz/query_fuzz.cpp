// Any query string, to each parser and producer, with a database that knows every file.
#include "fuzz/checked_response.h"
#include <mediacheckd/vxMediaRTOSDB/media_list.h>
#include <mediacheckd/vxMediaRTOSDB/media_metadata.h>

using namespace scripted;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string query(reinterpret_cast<const char*>(data), size);
    reset();
    platform.answer = [](const Bytes& request) {
        Bytes answer = words({wordAt(request, 0), 0, wordAt(request, 0) != 0, 1, 0});
        answer.resize(128);
        return reply(answer);
    };
    const bool otherGumiQuery = !query.starts_with("f=gumi");
    checkResponse([&] { return generateMediaList(nullptr, query.c_str()); }, otherGumiQuery);
    checkResponse([&] { return generateMetadata(nullptr, query.c_str()); });
    return 0;
}

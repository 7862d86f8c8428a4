// Any replies of the database, to each producer that asks it. The input is a row of replies: one
// byte that says how many items the reply claims (above 127: it has no valid header), one that
// gives its length in 8 bytes, then its bytes.
#include "fuzz/checked_response.h"
#include <mediacheckd/vxMediaRTOSDB/media_list.h>
#include <mediacheckd/vxMediaRTOSDB/media_metadata.h>

using namespace scripted;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) {
        return 0;
    }
    const Bytes input(data, data + size);
    const uint32_t listOptions = input[0];
    const std::function<int()> producers[] = {
        [] { return generateMediaList(nullptr, "fields=n,g,hi,gumi,s,dur,ao"); },
        [=] { return dbGetPagedList(nullptr, 100, 10, 0, listOptions, 0, 0, nullptr); },
        [] { return generateMetadata(nullptr, "t=v5info&p=100VMEDI/V0010001.MP4"); },
    };
    for (const auto& producer : producers) {
        size_t place = 1;
        reset();
        platform.answer = [&](const Bytes& request) {
            if (place + 2 > input.size()) {
                return sendFails();
            }
            const uint32_t count = input[place];
            const size_t length = std::min<size_t>(input[place + 1] * 8, input.size() - place - 2);
            Bytes message;
            if (count < 128) {
                message = words({wordAt(request, 0), 0, count, 1, wordAt(request, 8)});
                if (wordAt(request, 0) == 0) {
                    append(message, words({0, listOptions, 0, wordAt(request, 12) + count + 1, 1}));
                }
            }
            append(message, {input.begin() + static_cast<long>(place) + 2,
                             input.begin() + static_cast<long>(place + 2 + length)});
            message.resize(std::min<size_t>(message.size(), 1500));
            place += 2 + length;
            return reply(message);
        };
        checkResponse(producer);
    }
    return 0;
}

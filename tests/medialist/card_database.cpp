#include "tests/medialist/card_database.h"

#include "libvxMediaRTOSDB/src/db_responses.h"
#include "platform/vxipc.h"
#include "tests/support/db_replies.h"

using namespace scripted;

namespace {

Bytes record(const CardItem& item) {
    const auto size = static_cast<uint32_t>(item.size);
    const auto sizeHigh = static_cast<uint32_t>(item.size >> 32);
    Bytes bytes = itemRecord(item.type, item.fileName, item.highlights);
    putWord(bytes, 24, item.created);
    putWord(bytes, 40, item.status);
    putWord(bytes, 44, size);
    putWord(bytes, 48, sizeHigh);
    if (isGroup(item.type)) {
        append(bytes, words({item.group, item.first, item.last, 0, size, sizeHigh}));
        if (isPhotoGroup(item.type) && item.highlights != 0) {
            append(bytes, words({1}));
        }
    } else if (isVideo(item.type)) {
        append(bytes, videoInfo(1000, 0, item.clip));
    }
    return bytes;
}

}  // namespace

void CardDatabase::serve() {
    reset();
    folded.clear();
    platform.answer = [this](const Bytes& request) { return answer(request); };
}

Exchange CardDatabase::answer(const Bytes& request) {
    const uint32_t command = wordAt(request, 0);
    if (platform.opened == failingExchange) {
        return sendFails();
    }
    if (command == DB_CMD_LIST) {
        return reply(page(request));
    }
    if (command == DB_CMD_WRITE_UPLOAD_STATUS && wordAt(request, 32) == 5) {
        folded.emplace_back(request.begin() + 20, request.begin() + 32);
    }
    return reply(responseHeader(command, 1));
}

Bytes CardDatabase::page(const Bytes& request) const {
    const bool ofItems = (wordAt(request, 20) & QUERY_OPTION_VIDEO) != 0;
    const std::vector<CardItem>& list = ofItems ? items : sessionFiles;
    const auto total = static_cast<uint32_t>(list.size());
    const uint32_t start = wordAt(request, 12);
    const uint32_t session = sessionId + (platform.opened >= changingExchange ? 1 : 0);
    Bytes records;
    uint32_t count = 0;
    for (; count < wordAt(request, 4) && start + count < total; ++count) {
        const Bytes next = record(list[start + count]);
        if (sizeof(db_list_response_header) + records.size() + next.size() > VX_IPC_MESSAGE_MAX) {
            break;
        }
        append(records, next);
    }
    return join({responseHeader(DB_CMD_LIST, count + claimedItems),
                 words({start, wordAt(request, 16), wordAt(request, 20), total, session}),
                 records});
}

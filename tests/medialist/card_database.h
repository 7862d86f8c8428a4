// A media database in memory: answers list pages and status writes as the real one does, and fails
// or changes its session at a chosen exchange.
#pragma once

#include <limits>
#include <string>
#include <vector>

#include "libvxMediaRTOSDB/src/db_responses.h"
#include "platform/vxipc.h"
#include "tests/support/db_replies.h"

struct CardItem {
    uint32_t type;
    std::string fileName;
    uint32_t group = 0, first = 0, last = 0;
    uint32_t mebibytes = 0, highlights = 0, created = 0, clip = 0, status = 0;

    scripted::Bytes record() const {
        using namespace scripted;
        Bytes bytes = itemRecord(type, fileName, highlights);
        const Bytes size = words({mebibytes << 20, mebibytes >> 12});
        putWord(bytes, offsetof(db_item_record, created), created);
        putWord(bytes, offsetof(db_item_record, upload_status), status);
        std::copy(size.begin(), size.end(), bytes.begin() + offsetof(db_item_record, size));
        if (isGroup(type)) {
            append(bytes, join({words({group, first, last, 0}), size}));
            append(bytes, isPhotoGroup(type) && highlights != 0 ? words({1}) : Bytes{});
        } else if (isVideo(type)) {
            append(bytes, videoInfo(1000, 0, clip));
        }
        return bytes;
    }
};

struct CardDatabase {
    static constexpr int kNever = std::numeric_limits<int>::max();

    std::vector<CardItem> items;
    std::vector<CardItem> sessionFiles;
    int failingExchange = kNever;     // from 1; every attempt at it fails
    int changingExchange = kNever;    // from 1; the session id is another from it on
    uint32_t claimedItems = 0;        // items that a page claims and does not hold
    std::vector<std::string> folded;  // files whose status was set to 5

    // Answers the scripted platform's requests from now on. The database must outlive their use.
    void serve() {
        scripted::reset();
        folded.clear();
        scripted::platform.answer = [this](const auto& request) { return answer(request); };
    }

  private:
    scripted::Exchange answer(const scripted::Bytes& request) {
        const uint32_t command = scripted::wordAt(request, 0);
        if (scripted::platform.opened == failingExchange) {
            return scripted::sendFails();
        }
        if (command == DB_CMD_LIST) {
            return scripted::reply(page(request));
        }
        if (command == DB_CMD_WRITE_UPLOAD_STATUS && scripted::wordAt(request, 32) == 5) {
            folded.emplace_back(request.begin() + 20, request.begin() + 32);
        }
        return scripted::reply(scripted::responseHeader(command, 1));
    }

    scripted::Bytes page(const scripted::Bytes& request) const {
        const auto word = [&](size_t offset) { return scripted::wordAt(request, offset); };
        const auto& list = (word(20) & QUERY_OPTION_VIDEO) != 0 ? items : sessionFiles;
        const uint32_t session = scripted::platform.opened >= changingExchange ? 8 : 7;
        scripted::Bytes records;
        uint32_t count = 0;
        for (; count < word(4) && word(12) + count < list.size(); ++count) {
            const scripted::Bytes next = list[word(12) + count].record();
            if (sizeof(db_list_response_header) + records.size() + next.size() >
                kResponseBufferSize) {
                break;
            }
            scripted::append(records, next);
        }
        return scripted::join({scripted::responseHeader(DB_CMD_LIST, count + claimedItems),
                               scripted::words({word(12), word(16), word(20),
                                                static_cast<uint32_t>(list.size()), session}),
                               records});
    }
};

// A media database in memory: answers list pages and status writes as the real one does, and fails
// or changes its session at a chosen exchange.
#pragma once

#include "tests/support/captured_sink.h"
#include "tests/support/db_replies.h"
#include <mediacheckd/medialist/upload_rule.h>
#include <mediacheckd/vcore/logger.h>
#include <mediacheckd/vxMediaRTOSDB/db_responses.h>

struct CardItem {
    uint32_t type;
    std::string fileName;
    uint32_t group = 0, first = 0, last = 0;
    uint32_t mebibytes = 0, created = 0, status = 0;
};

// They accept whatever has not been uploaded.
inline std::vector<UploadRule> freshRules = {{1, UPLOAD_RULE_STATUS_0}, {0, UPLOAD_RULE_ANY}};

struct CardDatabase {
    std::vector<CardItem> items = {};
    std::vector<CardItem> sessionFiles = {};
    int failingExchange = 0;               // from 1; every attempt at it fails
    int changingExchange = 0;              // from 1; the session id is another from it on
    uint32_t claimedItems = 0;             // items that a page claims and does not hold
    std::vector<std::string> folded = {};  // directory and file whose status was set to 5

    // Answers the scripted platform's requests from now on. The database must outlive their use.
    void serve() {
        scripted::reset();
        folded.clear();
        scripted::platform.answer = [this](const scripted::Bytes& request) {
            if (scripted::platform.opened == failingExchange) {
                return scripted::sendFails();
            }
            const uint32_t command = scripted::wordAt(request, 0);
            if (command == DB_CMD_WRITE_UPLOAD_STATUS && scripted::wordAt(request, 32) == 5) {
                folded.emplace_back(request.begin() + 12, request.begin() + 32);
            }
            return scripted::reply(command == DB_CMD_LIST ? page(request)
                                                          : scripted::responseHeader(command, 1));
        };
    }

  private:
    static scripted::Bytes record(const CardItem& item) {
        using namespace scripted;
        Bytes bytes = itemRecord(item.type, item.fileName);
        putWord(bytes, offsetof(db_item_record, created), item.created);
        putWord(bytes, offsetof(db_item_record, upload_status), item.status);
        if (isGroup(item.type)) {
            append(bytes, words({item.group, item.first, item.last, 0, item.mebibytes << 20, 0}));
        } else if (isVideo(item.type)) {
            append(bytes, videoInfo(1000));
        }
        return bytes;
    }

    scripted::Bytes page(const scripted::Bytes& request) const {
        const auto word = [&](size_t offset) { return scripted::wordAt(request, offset); };
        const auto& list = (word(20) & QUERY_OPTION_VIDEO) != 0 ? items : sessionFiles;
        const auto total = static_cast<uint32_t>(list.size());
        const bool changed = changingExchange > 0 && scripted::platform.opened >= changingExchange;
        scripted::Bytes records;
        uint32_t count = 0;
        for (; count < word(4) && word(12) + count < total; ++count) {
            scripted::append(records, record(list[word(12) + count]));
        }
        return scripted::join(
            {scripted::responseHeader(DB_CMD_LIST, count + claimedItems),
             scripted::words({word(12), word(16), word(20), total, changed ? 8u : 7u}), records});
    }
};

// The logger's lines as long as this lives.
struct CapturedLog : CapturedSink {
    CapturedLog() { vcore::Logger::attach(*this); }
    ~CapturedLog() { vcore::Logger::attach(nullptr); }
};

// What is known of one file.
#include "simulator/answers/answers.h"
#include "simulator/answers/item_records.h"

namespace simulator {

namespace {

using Found = Database::Found;

// Answers a file request with a header and what append adds to it for the file.
template <typename Append>
Answer answerFile(Database& database, Request request, Append append) {
    const auto asked = readRecord<db_file_request>(request);
    if (!asked) {
        return {};
    }
    const auto found = database.find(asked->file);
    if (!found) {
        return {statusReply(asked->header, DB_STATUS_NOT_FOUND)};
    }
    Message reply;
    appendRecord(reply, responseHeader(asked->header, DB_STATUS_OK, 1));
    append(reply, *found);
    return {reply};
}

}  // namespace

Answer answerContentInfo(Database& database, Request request) {
    return answerFile(database, request, [](Message& reply, const Found& found) {
        appendItemRecord(reply, *found.item, *found.file);
    });
}

// The group's item stands for each of its files; a file of no group has an empty group.
Answer answerGroupContentInfo(Database& database, Request request) {
    return answerFile(database, request, [](Message& reply, const Found& found) {
        appendItemRecord(reply, *found.item, found.item->leader());
        if (isGroup(found.item->contentType())) {
            appendGroupInfo(reply, *found.item);
        } else {
            appendRecord(reply, db_group_info{});
        }
    });
}

Answer answerFileGumi(Database& database, Request request) {
    return answerFile(database, request, [](Message& reply, const Found& found) {
        appendItemRecord(reply, *found.item, *found.file);
        appendGumis(reply, *found.file);
    });
}

Answer answerMoreInfo(Database& database, Request request) {
    return answerFile(database, request, [](Message& reply, const Found& found) {
        appendRecord(reply, found.file->moreInfo);
    });
}

Answer answerContentInfoByGumi(Database& database, Request request) {
    const auto asked = readRecord<db_gumi_request>(request);
    if (!asked) {
        return {};
    }
    const MediaFile* file = database.findByGumi(asked->gumi);
    if (file == nullptr) {
        return {statusReply(asked->header, DB_STATUS_NOT_FOUND)};
    }
    db_file_name_response response{};
    response.header = responseHeader(asked->header, DB_STATUS_OK, 1);
    std::ranges::copy(file->record.dir_name, response.file.dir_name);
    std::ranges::copy(file->record.file_name, response.file.file_name);
    Message reply;
    appendRecord(reply, response);
    return {reply};
}

}  // namespace simulator

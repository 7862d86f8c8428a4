// The video specific information of one file or of several at once.
#include "simulator/answers/answers.h"
#include "simulator/answers/item_records.h"

namespace simulator {

namespace {

// The files that a request names after its header; none when it does not name as many as it says.
std::vector<db_file_name> filesAsked(Request request) {
    std::vector<db_file_name> files;
    const uint32_t count = requestHeader(request).request_count;
    if (request.size() < sizeof(db_request_header) ||
        request.size() - sizeof(db_request_header) != uint64_t{count} * sizeof(db_file_name)) {
        return files;
    }
    for (auto rest = request.subspan(sizeof(db_request_header)); !rest.empty();
         rest = rest.subspan(sizeof(db_file_name))) {
        files.push_back(*readRecord<db_file_name>(rest.first(sizeof(db_file_name))));
    }
    return files;
}

}  // namespace

// The files in the order asked for, without those that the database does not have, up to the first
// that does not fit in the message any more: whoever wants the others asks again.
Answer answerVideoSpecificInfo(Database& database, Request request) {
    const auto files = filesAsked(request);
    if (files.empty()) {
        return {};
    }
    const db_request_header header = requestHeader(request);
    Message records;
    uint32_t count = 0;
    for (const db_file_name& name : files) {
        const auto found = database.find(name);
        if (!found) {
            continue;
        }
        Message file;
        appendItemRecord(file, *found->item, *found->file);
        appendVideoInfo(file, *found->file);
        if (!appendWhereItFits(records, file, sizeof(db_response_header))) {
            break;
        }
        ++count;
    }
    Message reply;
    appendRecord(reply,
                 responseHeader(header, count > 0 ? DB_STATUS_OK : DB_STATUS_NOT_FOUND, count));
    appendBytes(reply, records);
    return {reply};
}

}  // namespace simulator

#include "simulator/answers/answer.h"

#include <algorithm>

#include "simulator/answers/answers.h"

namespace simulator {

namespace {

struct Command {
    uint32_t number;
    std::string_view name;
    std::vector<Message> (*answer)(Database&, Request);
};

constexpr Command kCommands[] = {
    {DB_CMD_LIST, "list", answerList},
    {DB_CMD_CONTENT_INFO, "content info", answerContentInfo},
    {DB_CMD_GROUP_CONTENT_INFO, "group content info", answerGroupContentInfo},
    {DB_CMD_VIDEO_SPECIFIC_INFO, "video specific info", answerVideoSpecificInfo},
    {DB_CMD_CONTENT_INFO_BY_GUMI, "content info by GUMI", answerContentInfoByGumi},
    {DB_CMD_FILE_GUMI, "file GUMI", answerFileGumi},
    {DB_CMD_MORE_INFO, "more info", answerMoreInfo},
    {DB_CMD_WRITE_UPLOAD_STATUS, "write upload status", answerWriteUploadStatus},
    {DB_CMD_MEDIA_HISTOGRAM, "media histogram", answerMediaHistogram},
    {DB_CMD_LIST_WITH_PARAMETERS, "list with parameters", answerListWithParameters},
    {DB_CMD_NON_DB_SCANDIR, "directory scan", answerScan},
};

const Command* findCommand(uint32_t number) {
    const auto* command = std::ranges::find(kCommands, number, &Command::number);
    return command == std::end(kCommands) ? nullptr : command;
}

}  // namespace

std::vector<Message> answer(Database& database, Request request) {
    const db_request_header header = requestHeader(request);
    const Command* command = findCommand(header.command_type);
    if (command == nullptr) {
        return {statusReply(header, DB_STATUS_UNKNOWN_COMMAND)};
    }
    if (auto replies = command->answer(database, request); !replies.empty()) {
        return replies;
    }
    return {statusReply(header, DB_STATUS_BAD_REQUEST)};
}

std::string_view commandName(uint32_t command) {
    const Command* known = findCommand(command);
    return known == nullptr ? "unknown command" : known->name;
}

std::string requestName(Request request) {
    const uint32_t command = requestHeader(request).command_type;
    return "command " + std::to_string(command) + " (" + std::string(commandName(command)) + "), " +
           std::to_string(request.size()) + " bytes";
}

}  // namespace simulator

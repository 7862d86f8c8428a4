// The files of a directory, database or not, in as many messages as they need.
#include "libvxMediaRTOSDB/src/records/name_fields.h"
#include "simulator/answers/answers.h"

namespace simulator {

namespace {

// What the two words of an entry mean is the scan's own: the low word of the size, the time.
scandir_result_item entryOf(const CardFile& file) {
    scandir_result_item entry{};
    fillField(entry.file_name, file.name.c_str());
    entry.word1 = static_cast<uint32_t>(file.size);
    entry.word2 = file.modified;
    return entry;
}

}  // namespace

Answer answerScan(Database& database, Request request) {
    const auto asked = readRecord<db_scandir_request>(request);
    if (!asked) {
        return {};
    }
    const std::string_view name(asked->dir_name, kDirNameSize);
    const auto& directories = database.directories();
    const auto directory = std::ranges::find(directories, name, &CardDirectory::name);
    if (directory == directories.end()) {
        return {statusReply(asked->header, DB_STATUS_NOT_FOUND)};
    }

    Answer messages = {Message(sizeof(db_scandir_response_header))};
    for (const CardFile& file : directory->files) {
        if (messages.back().size() + sizeof(scandir_result_item) > kMessageMax) {
            messages.emplace_back();
        }
        appendRecord(messages.back(), entryOf(file));
    }
    db_scandir_response_header header{};
    header.command_type = asked->header.command_type;
    header.number_transfers = static_cast<uint32_t>(messages.size());
    header.number_file_names = static_cast<uint32_t>(directory->files.size());
    header.token = asked->header.token;
    std::ranges::copy(std::as_bytes(std::span(&header, 1)), messages.front().begin());
    return messages;
}

}  // namespace simulator

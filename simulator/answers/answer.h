// From the bytes of a request to the messages that answer it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "simulator/answers/reply_record.h"
#include "simulator/card/database.h"

namespace simulator {

inline constexpr char kDatabaseChannel[] = "rtos_media_db";

// Answers one request: one message, or several for a directory scan. A request that is no record of
// its command, or has a command that the database does not know, is answered with a status.
[[nodiscard]] std::vector<Message> answer(Database& database, Request request);

// The command's name for people.
[[nodiscard]] std::string_view commandName(uint32_t command);

// A request in words: its command and length.
[[nodiscard]] std::string requestName(Request request);

}  // namespace simulator

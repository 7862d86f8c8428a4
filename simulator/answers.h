// The answers to the commands, one function a command. Each gives no message for a request that is
// not a record of its command.
#pragma once

#include <vector>

#include "simulator/database.h"
#include "simulator/reply_record.h"

namespace simulator {

using Answer = std::vector<Message>;

[[nodiscard]] Answer answerList(Database& database, Request request);
[[nodiscard]] Answer answerWriteUploadStatus(Database& database, Request request);
[[nodiscard]] Answer answerMediaHistogram(Database& database, Request request);

}  // namespace simulator

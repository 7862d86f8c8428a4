// The answers to the commands, one function a command. Each gives no message for a request that is
// not a record of its command.
#pragma once

#include <vector>

#include "simulator/answers/reply_record.h"
#include "simulator/card/database.h"

namespace simulator {

using Answer = std::vector<Message>;

[[nodiscard]] Answer answerList(Database& database, Request request);
[[nodiscard]] Answer answerListWithParameters(Database& database, Request request);
[[nodiscard]] Answer answerContentInfo(Database& database, Request request);
[[nodiscard]] Answer answerGroupContentInfo(Database& database, Request request);
[[nodiscard]] Answer answerVideoSpecificInfo(Database& database, Request request);
[[nodiscard]] Answer answerContentInfoByGumi(Database& database, Request request);
[[nodiscard]] Answer answerFileGumi(Database& database, Request request);
[[nodiscard]] Answer answerMoreInfo(Database& database, Request request);
[[nodiscard]] Answer answerScan(Database& database, Request request);
[[nodiscard]] Answer answerWriteUploadStatus(Database& database, Request request);
[[nodiscard]] Answer answerMediaHistogram(Database& database, Request request);

}  // namespace simulator

// The file of upload rules: a JSON document that people write.
#pragma once

#include <string>
#include <vector>

#include <mediacheckd/medialist/upload_rule.h>

namespace mediactl {

// Reads a file such as
//   {"upload_rules": [{"status": 0}, {"media": "photo", "score": {"min": 50}}]}
// A rule with "status" is a target rule, a rule with "media" a condition rule; a range without an
// end is open there.
// Throws simulator::InputError: file, member, reason.
[[nodiscard]] std::vector<UploadRule> readRules(const std::string& path);

}  // namespace mediactl

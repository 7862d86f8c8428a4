// What may stand next on the command line, for the completion of shells.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace mediactl {

// Returns the words that fit behind the others: commands, options, and files or directories of the
// card, for which the database is asked.
// words: the line behind the tool's name; the last one, which may be empty, is being written.
[[nodiscard]] std::vector<std::string> completions(const CLI::App& tool,
                                                   const std::vector<std::string>& words);

}  // namespace mediactl

// What may stand next on the command line, for the completion of shells.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace mediactl {

// Returns the words that fit behind the others: commands, options, log levels, and files or
// directories of the card, for which the database is asked.
// words: the line behind the tool's name; the last one, which may be empty, is being written.
[[nodiscard]] std::vector<std::string> completions(const CLI::App& tool,
                                                   std::span<const std::string> words);

}  // namespace mediactl

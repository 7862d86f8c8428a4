#include "tools/mediactl/completion.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>

#include <mediacheckd/vxMediaRTOSDB/util_log.h>
#include <mediacheckd/vxMediaRTOSDB/zep_queries.h>

namespace mediactl {

namespace {

// A shell waits while somebody writes: a large card is completed in part.
constexpr uint32_t kMaxItems = 3000;
constexpr uint32_t kPageSize = 15;

using Words = std::vector<std::string>;

void addOptions(const CLI::App& app, Words* found) {
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            if (std::ranges::find(*found, "--" + name) == found->end()) {
                found->push_back("--" + name);
            }
        }
    }
}

Words cardFiles() {
    Words files;
    const auto take = [](void* found, char* dirName, char* fileName) {
        static_cast<Words*>(found)->push_back(std::string(dirName) + "/" + fileName);
    };
    uint32_t session = 0;
    for (const auto query : {dbGetZEPItems, dbGetZEPSessionFileList}) {
        for (uint32_t index = 0; index < kMaxItems; index += kPageSize) {
            if (query(kPageSize, index, nullptr, nullptr, nullptr, take, &files, &session,
                      nullptr) <= 0) {
                break;
            }
        }
    }
    return files;
}

Words cardDirectories() {
    Words directories = cardFiles();
    for (std::string& name : directories) {
        name.resize(name.find('/'));
    }
    std::ranges::sort(directories);
    directories.erase(std::unique(directories.begin(), directories.end()), directories.end());
    return directories;
}

Words logLevels() {
    Words levels;
    for (uint32_t level = UTIL_LOG_OFF; level <= UTIL_LOG_TRACE; ++level) {
        levels.push_back(std::to_string(level));
    }
    return levels;
}

Words simulatorWords() {
    return {"statistics", "faults", "fault", "heal", "session", "model-number", "status"};
}

// What the help calls a value, and which ones there are. The shell itself knows its files.
constexpr struct {
    const char* placeholder;
    Words (*known)();
} kValues[] = {
    {"DIR/FILE", cardFiles},
    {"DIR", cardDirectories},
    {"LEVEL", logLevels},
    {"WORD", simulatorWords},
};

Words valuesOf(const std::string& placeholder) {
    const auto value = std::ranges::find_if(
        kValues, [&](const auto& each) { return placeholder == each.placeholder; });
    return value == std::end(kValues) ? Words() : value->known();
}

// A line as far as it is written.
struct Line {
    const CLI::App* command = nullptr;
    const CLI::Option* option = nullptr;  // whose value comes next
    size_t arguments = 0;                 // of the command
};

const CLI::Option* optionWithValue(const CLI::App* app, const std::string& name) {
    const CLI::Option* const option = app ? app->get_option_no_throw(name) : nullptr;
    return option && option->get_expected_min() > 0 ? option : nullptr;
}

Line readLine(const CLI::App& tool, std::span<const std::string> words) {
    const auto commands = tool.get_subcommands([](const CLI::App*) { return true; });
    Line line;
    for (const std::string& word : words) {
        if (line.option) {
            line.option = nullptr;
        } else if (word.starts_with('-')) {
            line.option = optionWithValue(&tool, word);
            line.option = line.option ? line.option : optionWithValue(line.command, word);
        } else if (line.command) {
            ++line.arguments;
        } else {
            const auto named = std::ranges::find(commands, word, &CLI::App::get_name);
            line.command = named == commands.end() ? nullptr : *named;
        }
    }
    return line;
}

Words argumentValues(const Line& line) {
    const auto arguments =
        line.command->get_options([](const CLI::Option* each) { return each->get_positional(); });
    return line.arguments < arguments.size() ? valuesOf(arguments[line.arguments]->get_name(true))
                                             : Words();
}

Words fitting(const CLI::App& tool, const Line& line, const std::string& current) {
    Words found;
    if (line.option) {
        found = valuesOf(line.option->get_type_name());
    } else if (current.starts_with('-')) {
        addOptions(tool, &found);
        if (line.command) {
            addOptions(*line.command, &found);
        }
    } else if (line.command) {
        found = argumentValues(line);
    } else {
        for (const CLI::App* each : tool.get_subcommands([](const CLI::App*) { return true; })) {
            found.push_back(each->get_name());
        }
    }
    return found;
}

}  // namespace

std::vector<std::string> completions(const CLI::App& tool, std::span<const std::string> words) {
    const std::string current = words.empty() ? "" : words.back();
    const Line line = readLine(tool, words.empty() ? words : words.first(words.size() - 1));
    Words found = fitting(tool, line, current);
    std::erase_if(found, [&](const std::string& word) { return !word.starts_with(current); });
    return found;
}

}  // namespace mediactl

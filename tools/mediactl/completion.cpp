#include "tools/mediactl/completion.h"

#include <CLI/CLI.hpp>
#include <algorithm>

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
            found->push_back("--" + name);
        }
    }
}

Words cardFiles() {
    Words files;
    const auto take = [](void* list, char* dirName, char* fileName) {
        static_cast<Words*>(list)->push_back(std::string(dirName) + "/" + fileName);
    };
    uint32_t session = 0;
    for (uint32_t index = 0; index < kMaxItems; index += kPageSize) {
        if (dbGetZEPItems(kPageSize, index, nullptr, nullptr, nullptr, take, &files, &session,
                          nullptr) <= 0) {
            break;
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

// The argument that a command still wants, of those that the card knows.
Words cardWords(const CLI::App& command) {
    for (const CLI::Option* option : command.get_options()) {
        if (option->get_positional()) {
            const std::string& name = option->get_name(true);
            return name == "DIR/FILE" ? cardFiles() : name == "DIR" ? cardDirectories() : Words();
        }
    }
    return {};
}

}  // namespace

std::vector<std::string> completions(const CLI::App& tool, const std::vector<std::string>& words) {
    const std::string current = words.empty() ? "" : words.back();
    const CLI::App* command = nullptr;
    const auto commands = tool.get_subcommands([](const CLI::App*) { return true; });
    bool hasArgument = false;
    for (size_t i = 0; i + 1 < words.size(); ++i) {
        const auto named = std::ranges::find(commands, words[i], &CLI::App::get_name);
        hasArgument = hasArgument || (command && words[i][0] != '-');
        command = !command && named != commands.end() ? *named : command;
    }
    Words found;
    if (current.starts_with('-')) {
        addOptions(tool, &found);
        if (command) {
            addOptions(*command, &found);
        }
    } else if (!command) {
        for (const CLI::App* each : commands) {
            found.push_back(each->get_name());
        }
    } else if (!hasArgument) {
        found = cardWords(*command);
    }
    std::erase_if(found, [&](const std::string& word) { return !word.starts_with(current); });
    return found;
}

}  // namespace mediactl

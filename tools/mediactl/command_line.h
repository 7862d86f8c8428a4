// The command line of mediactl: its commands, their options and arguments, and how it ends.
//
// A command family is one file with one function below, which adds the family's commands. The
// parser's header is slow to compile and stays out of them.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/mediactl/argument_forms.h"
#include "tools/mediactl/failure.h"

namespace CLI {
class App;
}

namespace mediactl {

// A command while it is added. What its options and arguments are written to must live until the
// command has run; an option that is not given leaves its value alone.
class Command {
  public:
    explicit Command(CLI::App& app) : mApp(app) {}

    Command& flag(const char* name, bool* value, const char* help);

    // placeholder: what the help calls the value.
    Command& option(const char* name, const char* placeholder, uint32_t* value, const char* help);
    Command& option(const char* name, const char* placeholder, std::optional<uint32_t>* value,
                    const char* help);
    Command& option(const char* name, const char* placeholder, std::optional<double>* value,
                    const char* help);
    Command& option(const char* name, const char* placeholder, std::string* value,
                    const char* help);

    Command& requiredOption(const char* name, const char* placeholder, std::string* value,
                            const char* help);

    // Arguments are required and stand in the order in which they are added.
    Command& argument(const char* name, uint32_t* value, const char* help);
    Command& argument(const char* name, std::string* value, const Form& form, const char* help);
    // All that follow; at least one.
    Command& arguments(const char* name, std::vector<std::string>* values, const char* help);

  private:
    CLI::App& mApp;
};

class CommandLine {
  public:
    CommandLine();
    ~CommandLine();

    // run: called when the command is chosen; returns an ExitStatus.
    Command add(const char* name, const char* help, std::function<int()> run);

    // Parses the call and runs the command that it chooses. Returns an ExitStatus.
    [[nodiscard]] int run(int argc, char** argv);

  private:
    void addToolOptions();

    std::unique_ptr<CLI::App> mApp;
    std::function<int()> mRun;
    std::string mRecording;  // its file; empty for none
};

void addDoctorCommand(CommandLine& line);      // doctor
void addEventCommands(CommandLine& line);      // listen
void addHistogramCommands(CommandLine& line);  // histogram
void addItemCommands(CommandLine& line);       // items
void addFileCommands(CommandLine& line);       // info, gumi, set-status
void addScanCommands(CommandLine& line);       // scan
void addMediaListCommands(CommandLine& line);  // count, candidates, upload-status
void addModelCommands(CommandLine& line);      // model
void addResponseCommands(CommandLine& line);   // medialist, metadata, paged
void addSimulatorCommand(CommandLine& line);   // sim

}  // namespace mediactl

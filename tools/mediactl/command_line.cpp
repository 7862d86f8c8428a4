#include "tools/mediactl/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <utility>

#include "tools/mediactl/completion.h"
#include "tools/mediactl/exchange_recording.h"
#include "tools/mediactl/exchange_watch.h"
#include "tools/mediactl/output.h"
#include <mediacheckd/vxMediaRTOSDB/util_log.h>

namespace mediactl {

namespace {

// Asked by the shells' completion with the words of a line.
constexpr const char* kCompleteCommand = "complete";

CLI::Validator validator(const Form& form) {
    const auto check = [form](const std::string& text) {
        return form.holds(text) ? "" : "'" + text + "' is not " + form.expected;
    };
    return {check, ""};
}

}  // namespace

Command& Command::flag(const char* name, bool* value, const char* help) {
    mApp.add_flag(name, *value, help);
    return *this;
}

Command& Command::option(const char* name, const char* placeholder, uint32_t* value,
                         const char* help) {
    mApp.add_option(name, *value, help)->type_name(placeholder)->check(validator(kNumber));
    return *this;
}

Command& Command::option(const char* name, const char* placeholder, std::optional<uint32_t>* value,
                         const char* help) {
    mApp.add_option(name, *value, help)->type_name(placeholder)->check(validator(kNumber));
    return *this;
}

Command& Command::option(const char* name, const char* placeholder, std::optional<double>* value,
                         const char* help) {
    mApp.add_option(name, *value, help)->type_name(placeholder)->check(validator(kSeconds));
    return *this;
}

Command& Command::option(const char* name, const char* placeholder, std::string* value,
                         const char* help) {
    mApp.add_option(name, *value, help)->type_name(placeholder);
    return *this;
}

Command& Command::requiredOption(const char* name, const char* placeholder, std::string* value,
                                 const char* help) {
    mApp.add_option(name, *value, help)->type_name(placeholder)->required();
    return *this;
}

Command& Command::argument(const char* name, uint32_t* value, const char* help) {
    mApp.add_option(name, *value, help)->required()->type_name("")->check(validator(kNumber));
    return *this;
}

Command& Command::argument(const char* name, std::string* value, const Form& form,
                           const char* help) {
    mApp.add_option(name, *value, help)->required()->type_name("")->check(validator(form));
    return *this;
}

Command& Command::arguments(const char* name, std::vector<std::string>* values, const char* help) {
    mApp.add_option(name, *values, help)->required()->type_name("");
    return *this;
}

CommandLine::CommandLine()
    : mApp(std::make_unique<CLI::App>(
          "Ask the camera's media database and wait for the result of its check.", "mediactl")) {
    g_logLevel = UTIL_LOG_OFF;
    addToolOptions();
}

CommandLine::~CommandLine() = default;

void CommandLine::addToolOptions() {
    mApp->add_flag_callback(
        "--json", [] { chooseFormat(Format::kJson); },
        "Print one JSON document instead of columns");
    auto* const csv = mApp->add_flag_callback(
        "--csv", [] { chooseFormat(Format::kCsv); }, "Print comma-separated values");
    csv->excludes("--json");
    mApp->add_option("--log-level", g_logLevel,
                     "Lines of the library on standard error: 0 none, 2 errors, 3 warnings, "
                     "4 requests and responses; 6 also dumps their bytes")
        ->check(CLI::Range(0, 6).description(""))
        ->type_name("LEVEL")
        ->capture_default_str();
    mApp->add_option(
            "--record", mRecording,
            "Write a line for each exchange to the file, which mediadb-sim --replay answers "
            "from")
        ->type_name("FILE");
    mApp->set_version_flag("--version", "mediactl " MEDIACHECKD_VERSION);
    mApp->require_subcommand(0, 1);
}

Command CommandLine::add(const char* name, const char* help, std::function<int()> run) {
    CLI::App* command = mApp->add_subcommand(name, help);
    // The tool's own options may stand behind the command too.
    command->fallthrough();
    command->callback([this, run = std::move(run)] { mRun = run; });
    return Command(*command);
}

int CommandLine::run(int argc, char** argv) {
    if (argc > 1 && std::strcmp(argv[1], kCompleteCommand) == 0) {
        for (const std::string& word :
             completions(*mApp, std::vector<std::string>(argv + 2, argv + argc))) {
            std::puts(word.c_str());
        }
        return kDone;
    }
    // A call that is refused is parsed in part only.
    if (std::ranges::find(argv, argv + argc, std::string_view("--json")) != argv + argc) {
        chooseFormat(Format::kJson);
    }
    try {
        mApp->parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return error.get_exit_code() == 0 ? mApp->exit(error)
                                          : refuseCall(error.what(), "--help tells more");
    }
    if (!mRun) {
        return refuseCall("a command is needed", "--help names them");
    }
    if (g_logLevel == UTIL_LOG_TRACE) {
        // The library's own dump would stand among the results.
        g_logLevel = UTIL_LOG_INFO;
        dumpExchanges();
    }
    const int begun = mRecording.empty() ? kDone : recordExchanges(mRecording);
    const int status = begun == kDone ? mRun() : begun;
    const int recorded = finishRecording();
    return status == kDone ? recorded : status;
}

}  // namespace mediactl

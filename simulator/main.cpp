// mediadb-sim: serves a card folder as the camera's media database.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <iostream>

#include "platform/host/channel_server.h"
#include "platform/host/settings_service.h"
#include "platform/host/stop_signals.h"
#include "simulator/card/input_error.h"
#include "simulator/control/control.h"
#include "simulator/exchanges/exchanges.h"
#include "simulator/live/live_card.h"
#include <mediacheckd/platform/csi.h>

namespace {

constexpr char kDatabaseChannel[] = "rtos_media_db";
constexpr int kExitTrouble = 1;
constexpr int kExitWrongCall = 2;  // or a card that is none

struct Arguments {
    std::string card;
    std::vector<std::string> faults;
    bool log = false;
};

void describe(CLI::App& app, Arguments& arguments) {
    app.description("Serves a card folder as the camera's media database until SIGINT or SIGTERM.");
    app.add_option("CARD", arguments.card, "the card folder, with DCIM and perhaps card.json in it")
        ->required();
    app.add_option_function<std::vector<std::string>>(
           "--fault",
           [&arguments](const std::vector<std::string>& texts) {
               for (const std::string& text : texts) {
                   try {
                       arguments.faults.push_back(simulator::PlannedFault(text).text());
                   } catch (const std::invalid_argument& error) {
                       throw CLI::ValidationError("--fault", error.what());
                   }
               }
           },
           "misbehave, on the N-th exchange or where another condition holds, or on every one: " +
               simulator::faultSyntax())
        ->type_name("[CONDITION:]KIND[=VALUE]")
        ->allow_extra_args(false)
        ->take_all();
    app.set_version_flag("--version", "mediadb-sim " MEDIACHECKD_VERSION);
    app.add_flag("--log", arguments.log, "print a line for each exchange");
}

host::Settings settingsOf(const simulator::Database& database) {
    host::Settings settings;
    if (database.modelNumber) {
        settings[CSI_MODEL_NUMBER] = *database.modelNumber;
    }
    return settings;
}

void serve(const Arguments& arguments) {
    const host::UniqueFd stop = host::openStopSignals();
    simulator::LiveCard card(arguments.card);
    simulator::Exchanges exchanges(arguments.log ? &std::cout : nullptr);
    for (const std::string& fault : arguments.faults) {
        exchanges.add(fault);
    }
    host::ChannelServer server;
    server.open(kDatabaseChannel, [&](simulator::Request request) {
        return exchanges.next(card.current(), request);
    });
    server.open(host::kSettingsChannel, [&](simulator::Request request) {
        return host::Reply{
            .messages = {host::answerSettingRequest(settingsOf(card.current()), request)}};
    });
    server.open(simulator::kControlChannel, [&](simulator::Request request) {
        return simulator::control(card, exchanges, request);
    });
    std::cout << "serving " << card.current().items().size() << " items of " << arguments.card
              << std::endl;
    server.run(stop.get());
}

int run(int argc, char** argv) {
    Arguments arguments;
    CLI::App app;
    describe(app, arguments);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kExitWrongCall;
    }
    serve(arguments);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const simulator::InputError& error) {
        std::fprintf(stderr, "mediadb-sim: %s\n", error.what());
        return kExitWrongCall;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "mediadb-sim: %s\n", error.what());
        return kExitTrouble;
    }
}

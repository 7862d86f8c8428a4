// mediadb-sim: serves a card folder, or a recording, as the camera's media database.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <iostream>

#include "platform/host/channel_server.h"
#include "platform/host/settings_service.h"
#include "platform/host/stop_signals.h"
#include "simulator/answers/answer.h"
#include "simulator/card/input_error.h"
#include "simulator/control/control.h"
#include "simulator/exchanges/exchanges.h"
#include "simulator/live/live_card.h"
#include "simulator/record/recorder.h"
#include "simulator/record/replay.h"
#include <mediacheckd/platform/csi.h>

namespace {

constexpr int kExitTrouble = 1;    // or what was asked differs from the recording
constexpr int kExitWrongCall = 2;  // or a card that is none

struct Arguments {
    std::string card;
    std::string replay;
    std::string record;
    std::vector<std::string> faults;
    bool log = false;
};

void describe(CLI::App& app, Arguments& arguments) {
    app.description("Serves a card folder as the camera's media database until SIGINT or SIGTERM.");
    auto* const card = app.add_option("CARD", arguments.card,
                                      "the card folder, with DCIM and perhaps card.json in it");
    app.add_option("--replay", arguments.replay,
                   "answer from a recording, and tell where what is asked differs from it")
        ->type_name("FILE")
        ->excludes(card);
    app.add_option("--record", arguments.record, "write a line for each exchange to the file")
        ->type_name("FILE")
        ->needs(card);
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

// The handler of a channel that writes down what it answers.
host::RequestHandler recorded(const char* channel, const host::RequestHandler& handler,
                              simulator::Recorder& recorder) {
    return [=, &recorder](simulator::Request request) {
        simulator::RecordedExchange exchange{
            recorder.time(), channel, {request.begin(), request.end()}};
        host::Reply reply = handler(request);
        exchange.delay = reply.delay;
        exchange.messages = reply.messages;
        exchange.closed = reply.close;
        recorder.write(exchange);
        return reply;
    };
}

int serveRecording(const Arguments& arguments) {
    const host::UniqueFd stop = host::openStopSignals();
    simulator::Replay replay(arguments.replay, std::cerr);
    host::ChannelServer server;
    for (const std::string& channel : replay.channels()) {
        server.open(channel, [&replay, channel](simulator::Request request) {
            return replay.next(channel, request);
        });
    }
    std::cout << "serving " << replay.left() << " exchanges of " << arguments.replay << std::endl;
    server.run(stop.get());
    return replay.finish() ? 0 : kExitTrouble;
}

int serveCard(const Arguments& arguments) {
    const host::UniqueFd stop = host::openStopSignals();
    simulator::LiveCard card(arguments.card);
    std::optional<simulator::Recorder> recorder;
    if (!arguments.record.empty()) {
        recorder.emplace(arguments.record);
    }
    simulator::Exchanges exchanges(arguments.log ? &std::cout : nullptr);
    for (const std::string& fault : arguments.faults) {
        exchanges.add(fault);
    }
    host::ChannelServer server;
    const auto open = [&](const char* channel, const host::RequestHandler& handler) {
        server.open(channel, recorder ? recorded(channel, handler, *recorder) : handler);
    };
    open(simulator::kDatabaseChannel,
         [&](simulator::Request request) { return exchanges.next(card.current(), request); });
    open(host::kSettingsChannel, [&](simulator::Request request) {
        return host::Reply{
            .messages = {host::answerSettingRequest(settingsOf(card.current()), request)}};
    });
    server.open(simulator::kControlChannel, [&](simulator::Request request) {
        return simulator::control(card, exchanges, request);
    });
    std::cout << "serving " << card.current().items().size() << " items of " << arguments.card
              << std::endl;
    server.run(stop.get());
    return 0;
}

int run(int argc, char** argv) {
    Arguments arguments;
    CLI::App app;
    describe(app, arguments);
    try {
        app.parse(argc, argv);
        if (arguments.card.empty() && arguments.replay.empty()) {
            throw CLI::RequiredError("CARD");
        }
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kExitWrongCall;
    }
    return arguments.replay.empty() ? serveCard(arguments) : serveRecording(arguments);
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

#include "simulator/control/control.h"

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "libvxMediaRTOSDB/src/records/name_fields.h"
#include "simulator/exchanges/number.h"
#include <mediacheckd/platform/vxipc.h>

namespace simulator {

namespace {

using Json = nlohmann::ordered_json;
using Words = std::vector<std::string>;

struct Controlled {
    LiveCard& card;
    Exchanges& exchanges;
};

Json tellStatistics(Controlled simulator, const Words&) {
    Json commands = Json::object();
    for (const auto& [name, count] : simulator.exchanges.commands()) {
        commands[std::string(name)] = count;
    }
    return {{"exchanges", simulator.exchanges.count()},
            {"disturbed", simulator.exchanges.disturbed()},
            {"commands", commands}};
}

Json tellFaults(Controlled simulator, const Words&) {
    Json faults = Json::array();
    for (const auto& [number, planned] : simulator.exchanges.faults()) {
        faults.push_back(
            {{"number", number}, {"times", planned.times()}, {"fault", planned.text()}});
    }
    return {{"faults", faults}};
}

Json addFault(Controlled simulator, const Words& words) {
    return {{"number", simulator.exchanges.add(words.front())}};
}

Json heal(Controlled simulator, const Words& words) {
    const std::string& which = words.front();
    if (which == "all") {
        simulator.exchanges.removeAll();
    } else if (!simulator.exchanges.remove(readNumber(which, "fault"))) {
        throw std::invalid_argument("there is no fault " + which);
    }
    return {{"healed", which}};
}

Json beginSession(Controlled simulator, const Words& words) {
    uint32_t& session = simulator.card.current().sessionId;
    session = words.empty() ? session + 1 : readNumber(words.front(), "session");
    return {{"session_id", session}};
}

Json changeModelNumber(Controlled simulator, const Words& words) {
    const uint32_t number = readNumber(words.front(), "model number");
    simulator.card.setModelNumber(number);
    return {{"model", number}};
}

Json changeStatus(Controlled simulator, const Words& words) {
    const std::string& path = words.front();
    const uint32_t status = readNumber(words.back(), "upload status");
    db_file_name name = {};
    const bool isPath =
        path.size() == kDirNameSize + 1 + kFileNameSize && path[kDirNameSize] == '/';
    if (isPath) {
        fillField(name.dir_name, path.c_str());
        fillField(name.file_name, path.c_str() + kDirNameSize + 1);
    }
    if (!isPath || !simulator.card.current().writeUploadStatus(name, status)) {
        throw std::invalid_argument("the card has no file " + path);
    }
    return {{"file", path}, {"upload_status", status}};
}

struct Command {
    std::string_view name;
    std::size_t leastWords;  // behind the name
    std::size_t mostWords;
    Json (*carryOut)(Controlled, const Words&);
};

constexpr Command kCommands[] = {
    {"statistics", 0, 0, tellStatistics},
    {"faults", 0, 0, tellFaults},
    {"fault", 1, 1, addFault},
    {"heal", 1, 1, heal},
    {"session", 0, 1, beginSession},
    {"model-number", 1, 1, changeModelNumber},
    {"status", 2, 2, changeStatus},
};

Words wordsOf(std::string_view text) {
    std::istringstream stream{std::string(text)};
    return {std::istream_iterator<std::string>(stream), {}};
}

Json carryOut(Controlled simulator, std::string_view text) {
    Words words = wordsOf(text);
    const std::string name = words.empty() ? "" : words.front();
    const auto* command = std::ranges::find(kCommands, name, &Command::name);
    if (command == std::end(kCommands)) {
        throw std::invalid_argument("'" + name + "' is nothing that it can be told");
    }
    words.erase(words.begin());
    if (words.size() < command->leastWords || words.size() > command->mostWords) {
        throw std::invalid_argument(name + " takes another number of words");
    }
    return command->carryOut(simulator, words);
}

host::Reply reply(std::string_view text) {
    constexpr std::size_t kPartMax = VX_IPC_MESSAGE_MAX - 1;
    host::Reply reply;
    do {
        const std::string_view part = text.substr(0, kPartMax);
        text.remove_prefix(part.size());
        Message message = {static_cast<std::byte>(text.empty() ? '.' : '+')};
        appendBytes(message, std::as_bytes(std::span(part)));
        reply.messages.push_back(std::move(message));
    } while (!text.empty());
    return reply;
}

}  // namespace

host::Reply control(LiveCard& card, Exchanges& exchanges, Request request) {
    const std::string_view text(reinterpret_cast<const char*>(request.data()), request.size());
    Json told;
    try {
        told = carryOut({card, exchanges}, text);
    } catch (const std::invalid_argument& error) {
        told = {{"error", error.what()}};
    }
    return reply(told.dump(-1, ' ', false, Json::error_handler_t::replace));
}

}  // namespace simulator

#include "simulator/record/replay.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "simulator/answers/answer.h"
#include "simulator/card/input_error.h"
#include "simulator/card/input_file.h"

namespace simulator {

namespace {

// Puts the token of one request in the place of another's.
void changeToken(Message& message, std::size_t offset, Request from, Request to) {
    changeWord(message, offset, [&](uint32_t token) {
        return token == requestHeader(from).token ? requestHeader(to).token : token;
    });
}

// The request as it would be with the token of another.
Message withTokenOf(Request other, Message request) {
    changeToken(request, offsetof(db_request_header, token), Message(request), other);
    return request;
}

std::string nameOf(std::string_view channel, Request request) {
    return channel == kDatabaseChannel
               ? requestName(request)
               : std::to_string(request.size()) + " bytes on " + std::string(channel);
}

}  // namespace

Replay::Replay(const std::string& path, std::ostream& differences)
    : mPath(path), mDifferences(differences) {
    std::ifstream file = openInput(path);
    std::size_t number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.empty() || line.front() == '#') {
            continue;
        }
        try {
            mLeft.push_back({number, parseExchange(line)});
        } catch (const std::invalid_argument& error) {
            throw InputError(path + ":" + std::to_string(number) + ": " + error.what());
        }
    }
}

std::set<std::string> Replay::channels() const {
    std::set<std::string> names;
    for (const Line& line : mLeft) {
        names.insert(line.exchange.channel);
    }
    return names;
}

Replay::Lines::iterator Replay::find(std::string_view channel, Request request) {
    const auto onChannel = [&](const Line& line) { return line.exchange.channel == channel; };
    const auto same = std::ranges::find_if(mLeft, [&](const Line& line) {
        return onChannel(line) &&
               std::ranges::equal(withTokenOf(request, line.exchange.request), request);
    });
    return same != mLeft.end() ? same : std::ranges::find_if(mLeft, onChannel);
}

std::ostream& Replay::tell() {
    mSame = false;
    return mDifferences << mPath << ':';
}

host::Reply Replay::next(std::string_view channel, Request request) {
    const auto found = find(channel, request);
    if (found == mLeft.end()) {
        tell() << " nothing is left for " << nameOf(channel, request) << std::endl;
        return {.close = true};
    }
    const auto [number, exchange] = std::move(*found);
    mLeft.erase(found);

    const Message expected = withTokenOf(request, exchange.request);
    if (!std::ranges::equal(expected, request)) {
        const auto place = std::ranges::mismatch(expected, request).in1 - expected.begin();
        tell() << number << ": " << nameOf(channel, exchange.request) << " is recorded, and came "
               << nameOf(channel, request) << "; they differ from byte " << place << " on"
               << std::endl;
    }
    host::Reply reply{exchange.messages, exchange.delay, exchange.closed};
    for (Message& message : reply.messages) {
        changeToken(message, offsetof(db_response_header, token), exchange.request, request);
    }
    return reply;
}

bool Replay::finish() {
    for (const auto& [number, exchange] : mLeft) {
        tell() << number << ": nobody asked for " << nameOf(exchange.channel, exchange.request)
               << std::endl;
    }
    return mSame;
}

}  // namespace simulator

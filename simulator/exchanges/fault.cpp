#include "simulator/exchanges/fault.h"

#include <algorithm>
#include <stdexcept>

#include "simulator/exchanges/number.h"

namespace simulator {

namespace {

struct KindName {
    std::string_view name;
    FaultKind kind;
    std::string_view value;  // what its value is, empty without one
};

constexpr KindName kKinds[] = {
    {"refuse", FaultKind::kRefuse, ""},          {"no-reply", FaultKind::kNoReply, ""},
    {"status", FaultKind::kStatus, "STATUS"},    {"short", FaultKind::kShort, "BYTES"},
    {"wrong-token", FaultKind::kWrongToken, ""}, {"too-many", FaultKind::kTooMany, ""},
    {"delay", FaultKind::kDelay, "MS"},
};

}  // namespace

Fault parseFault(std::string_view kind) {
    const auto equals = std::min(kind.find('='), kind.size());
    const auto* known = std::ranges::find(kKinds, kind.substr(0, equals), &KindName::name);
    if (known == std::end(kKinds)) {
        throw std::invalid_argument("'" + std::string(kind) + "' is no fault");
    }
    const bool hasValue = equals < kind.size();
    if (hasValue == known->value.empty()) {
        throw std::invalid_argument(std::string(known->name) +
                                    (hasValue ? " takes no value" : " needs a value"));
    }
    return {known->kind, hasValue ? readNumber(kind.substr(equals + 1), "value") : 0};
}

std::string faultSyntax() {
    std::string syntax;
    for (const KindName& kind : kKinds) {
        syntax += (syntax.empty() ? "" : ", ") + std::string(kind.name);
        syntax += (kind.value.empty() ? "" : "=") + std::string(kind.value);
    }
    return syntax;
}

bool reachesDatabase(const Fault& fault) {
    return fault.kind != FaultKind::kRefuse && fault.kind != FaultKind::kStatus;
}

void applyFault(const Fault& fault, Request request, host::Reply& reply) {
    switch (fault.kind) {
        case FaultKind::kRefuse:
            reply.messages.clear();
            reply.close = true;
            return;
        case FaultKind::kNoReply:
            reply.messages.clear();
            return;
        case FaultKind::kStatus:
            reply.messages = {
                statusReply(requestHeader(request), static_cast<DbStatus>(fault.value))};
            return;
        case FaultKind::kShort:
            if (!reply.messages.empty()) {
                reply.messages.resize(1);
                Message& message = reply.messages.front();
                message.resize(std::min<std::size_t>(message.size(), fault.value));
            }
            return;
        case FaultKind::kWrongToken:
            for (Message& message : reply.messages) {
                changeWord(message, offsetof(db_response_header, token),
                           [](uint32_t token) { return ~token; });
            }
            return;
        case FaultKind::kTooMany:
            for (Message& message : reply.messages) {
                changeWord(message, offsetof(db_response_header, count_returned),
                           [&](uint32_t) { return requestHeader(request).request_count + 1; });
            }
            return;
        case FaultKind::kDelay:
            reply.delay = std::chrono::milliseconds(fault.value);
            return;
    }
}

}  // namespace simulator

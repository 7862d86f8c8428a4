#include "simulator/exchanges/exchanges.h"

#include <algorithm>
#include <vector>

#include "simulator/answers/answer.h"

namespace simulator {

host::Reply Exchanges::next(Database& database, Request request) {
    const uint32_t command = requestHeader(request).command_type;
    ++mCount;
    ++mCommands[commandName(command)];
    std::vector<Fault> faults;
    for (auto& [number, planned] : mFaults) {
        if (planned.happensOn(mCount, command)) {
            faults.push_back(planned.fault());
        }
    }
    mDisturbed += faults.empty() ? 0 : 1;

    host::Reply reply;
    if (std::ranges::all_of(faults, reachesDatabase)) {
        reply.messages = answer(database, request);
    }
    for (const Fault& fault : faults) {
        applyFault(fault, request, reply);
    }
    if (mLog != nullptr) {
        log(request, reply, !faults.empty());
    }
    return reply;
}

uint32_t Exchanges::add(std::string_view fault) {
    mFaults.emplace(mFaultsAdded + 1, PlannedFault(fault, mCount));
    return ++mFaultsAdded;
}

void Exchanges::log(Request request, const host::Reply& reply, bool disturbed) const {
    *mLog << mCount << ": " << requestName(request) << ": ";
    std::size_t bytes = 0;
    for (const Message& message : reply.messages) {
        bytes += message.size();
    }
    if (reply.close) {
        *mLog << "connection closed";
    } else if (reply.messages.empty()) {
        *mLog << "no reply";
    } else if (reply.messages.size() == 1) {
        *mLog << "reply of " << bytes << " bytes";
    } else {
        *mLog << "reply of " << reply.messages.size() << " messages, " << bytes << " bytes";
    }
    if (disturbed) {
        *mLog << ", disturbed";
    }
    *mLog << std::endl;
}

}  // namespace simulator

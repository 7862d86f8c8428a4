#include "simulator/exchanges/exchanges.h"

#include <algorithm>

#include "simulator/answers/answer.h"

namespace simulator {

host::Reply Exchanges::next(Database& database, Request request) {
    ++mCount;
    std::vector<Fault> faults;
    std::ranges::copy_if(mFaults, std::back_inserter(faults), [this](const Fault& fault) {
        return fault.exchange == 0 || fault.exchange == mCount;
    });
    host::Reply reply;
    if (std::ranges::all_of(faults, reachesDatabase)) {
        reply.messages = answer(database, request);
    }
    for (const Fault& fault : faults) {
        applyFault(fault, request, reply);
    }
    if (mLog != nullptr) {
        log(request, reply, faults.size());
    }
    return reply;
}

void Exchanges::log(Request request, const host::Reply& reply, std::size_t faults) const {
    const uint32_t command = requestHeader(request).command_type;
    *mLog << mCount << ": command " << command << " (" << commandName(command) << "), "
          << request.size() << " bytes: ";
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
    if (faults > 0) {
        *mLog << ", disturbed";
    }
    *mLog << std::endl;
}

}  // namespace simulator

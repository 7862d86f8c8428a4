// The exchanges over the database's channel: counted, logged, and disturbed on request.
#pragma once

#include <ostream>
#include <span>
#include <vector>

#include "platform/host/channel_server.h"
#include "simulator/card/database.h"
#include "simulator/exchanges/fault.h"

namespace simulator {

class Exchanges {
  public:
    // log: must outlive this object; one line an exchange; null for none.
    Exchanges(std::vector<Fault> faults, std::ostream* log)
        : mFaults(std::move(faults)), mLog(log) {}

    // The database's reply to the next request.
    [[nodiscard]] host::Reply next(Database& database, Request request);

  private:
    void log(Request request, const host::Reply& reply, std::size_t faults) const;

    std::vector<Fault> mFaults;
    std::ostream* mLog;
    uint32_t mCount = 0;
};

}  // namespace simulator

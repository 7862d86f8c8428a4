// The exchanges over the database's channel: counted, logged, and disturbed on request.
#pragma once

#include <cstdint>
#include <map>
#include <ostream>
#include <string_view>

#include "platform/host/channel_server.h"
#include "simulator/card/database.h"
#include "simulator/exchanges/planned_fault.h"

namespace simulator {

class Exchanges {
  public:
    // log: must outlive this object; one line an exchange; null for none.
    explicit Exchanges(std::ostream* log) : mLog(log) {}

    // The database's reply to the next request.
    [[nodiscard]] host::Reply next(Database& database, Request request);

    // Lets a fault happen from now on. Returns the number it is known by, from 1.
    // Throws std::invalid_argument as PlannedFault does.
    uint32_t add(std::string_view fault);
    // Lets it happen no more. Returns false when there is no such fault.
    bool remove(uint32_t number) { return mFaults.erase(number) != 0; }
    void removeAll() { mFaults.clear(); }

    // By number.
    [[nodiscard]] const std::map<uint32_t, PlannedFault>& faults() const { return mFaults; }
    // How many exchanges there were, how many of them disturbed, and how many by the command's
    // name.
    [[nodiscard]] uint32_t count() const { return mCount; }
    [[nodiscard]] uint32_t disturbed() const { return mDisturbed; }
    [[nodiscard]] const std::map<std::string_view, uint32_t>& commands() const { return mCommands; }

  private:
    void log(Request request, const host::Reply& reply, bool disturbed) const;

    std::map<uint32_t, PlannedFault> mFaults;
    uint32_t mFaultsAdded = 0;
    std::ostream* mLog;
    uint32_t mCount = 0;
    uint32_t mDisturbed = 0;
    std::map<std::string_view, uint32_t> mCommands;
};

}  // namespace simulator

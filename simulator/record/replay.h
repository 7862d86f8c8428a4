// Answers from a recording, and tells where what is asked differs from what was asked then.
#pragma once

#include <list>
#include <ostream>
#include <set>
#include <string>
#include <string_view>

#include "platform/host/channel_server.h"
#include "simulator/answers/reply_record.h"
#include "simulator/record/recorded_exchange.h"

namespace simulator {

class Replay {
  public:
    // Reads the recording.
    // differences: must outlive this object; a line each.
    // Throws InputError that names file, line and reason.
    Replay(const std::string& path, std::ostream& differences);

    [[nodiscard]] std::set<std::string> channels() const;
    // How many exchanges have not been asked for.
    [[nodiscard]] std::size_t left() const { return mLeft.size(); }

    // The recorded answer to a request. Each is given once: the first one left whose request is the
    // same but for its token, which lies anew with every client, else the first one left, as a
    // difference. Where none is left the connection is closed, as a difference.
    [[nodiscard]] host::Reply next(std::string_view channel, Request request);

    // Tells what has not been asked for. Returns whether there was no difference at all.
    [[nodiscard]] bool finish();

  private:
    struct Line {
        std::size_t number;
        RecordedExchange exchange;
    };
    using Lines = std::list<Line>;

    [[nodiscard]] Lines::iterator find(std::string_view channel, Request request);
    std::ostream& tell();

    std::string mPath;
    std::ostream& mDifferences;
    bool mSame = true;
    Lines mLeft;
};

}  // namespace simulator

// Writes a recording: exchanges in a file, a line each.
#pragma once

#include <chrono>
#include <fstream>
#include <string>

#include "simulator/record/recorded_exchange.h"

namespace simulator {

class Recorder {
  public:
    // Begins a new recording in the file. Throws std::runtime_error when it cannot be written.
    explicit Recorder(const std::string& path);

    // The time since the recording began.
    [[nodiscard]] std::chrono::microseconds time() const;

    // Writes one exchange, and at once: whoever records looks for trouble.
    // Throws std::runtime_error as the constructor does.
    void write(const RecordedExchange& exchange);

  private:
    void requireGood() const;

    std::string mPath;
    std::ofstream mFile;
    std::chrono::steady_clock::time_point mStart = std::chrono::steady_clock::now();
};

}  // namespace simulator

// Writes what goes over the channels to a file, from which mediadb-sim answers (--replay).
#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace mediactl {

// From now on. Returns an ExitStatus: whether the file can be written.
[[nodiscard]] int recordExchanges(const std::string& path);

// A request has gone out.
void recordRequest(const std::string& channel, std::span<const std::byte> request);
// A message of the answer to it has come.
void recordMessage(std::span<const std::byte> message);
// The connection was closed instead.
void recordClose();

// Writes the latest exchange, which nothing more belongs to.
// Returns an ExitStatus: whether the whole recording is in the file.
[[nodiscard]] int finishRecording();

}  // namespace mediactl

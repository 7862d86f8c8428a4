// Ctrl-C ends a command between two exchanges, with a whole document or an error.
#pragma once

namespace mediactl {

// From now on SIGINT and SIGTERM are noted.
void noteInterruptions();

// Ends the process as the signal would have, after the error, when one was noted.
void endIfInterrupted();

}  // namespace mediactl

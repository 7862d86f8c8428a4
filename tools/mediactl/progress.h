// How far a command is: a line on a terminal's standard error, once it takes more than a second.
#pragma once

#include <cstdint>

namespace mediactl {

// Shows it, where a second has passed.
void showProgress();

// What it tells from now on; without it, how many exchanges there were.
void noteItems(uint32_t done, uint32_t total);

// An exchange begins.
void noteExchange();

// Takes the line away, so that something else can be printed.
void hideProgress();

}  // namespace mediactl

// Runs a response producer and ends the process when it prints anything but one complete response.
#pragma once

#include <sys/stat.h>

#include <cstdlib>

#include "tests/support/produced.h"
#include "tests/support/scripted_platform.h"

// Where the producers keep the identity of the card.
inline const int g_cardFolder = mkdir("/tmp/fuse_d", 0777);

inline void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// mayPrintNothing: the producer may also fail without a response.
inline void checkResponse(auto producer, bool mayPrintNothing = false) {
    char* text = nullptr;
    size_t size = 0;
    FILE* const saved = stdout;
    stdout = open_memstream(&text, &size);
    const int result = producer();
    std::fclose(stdout);
    stdout = saved;
    const std::string printed(text, size);
    std::free(text);

    require(scripted::platform.opened == scripted::platform.closed);
    const auto produced = takeApart(printed);
    require(produced || (mayPrintNothing && printed.empty()));
    require(result == (produced && produced->status == 200 ? 0 : -1));
}

// The callbacks of a log sink.
#pragma once

#include <vector>

#include <mediacheckd/vcore/log_sink.h>

struct log_callback_list {
    std::vector<log_callback_t> entries;
};

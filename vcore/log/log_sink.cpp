#include <mediacheckd/vcore/log_sink.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include "vcore/base/heap_storage.h"
#include "vcore/log/log_sink_private.h"

static_assert(sizeof(void*) != 4 || sizeof(log_sink_t) == 9 * 4, "nine fields of 32 bits");

namespace {

int setField(log_sink_t* sink, uint32_t log_sink_t::*field, uint32_t value) {
    if (sink == nullptr) {
        return 1;
    }
    vcore::shared(sink->*field).store(value, std::memory_order_relaxed);
    return 0;
}

int getField(const log_sink_t* sink, uint32_t log_sink_t::*field, uint32_t* value) {
    if (sink == nullptr || value == nullptr) {
        return 1;
    }
    *value = vcore::shared(sink->*field).load(std::memory_order_relaxed);
    return 0;
}

void setFileTexts(log_sink_t* sink, char* path, char* mode) {
    free(sink->path);
    free(sink->mode);
    sink->path = path;
    sink->mode = mode;
}

bool hasCallbacks(const log_sink_t* sink) {
    return sink != nullptr && sink->callbacks != nullptr;
}

}  // namespace

log_sink_t* log_sink_create() {
    auto* const sink = vcore::newStorage<log_sink_t>();
    if (sink == nullptr) {
        return nullptr;
    }
    sink->callbacks = new (std::nothrow) log_callback_list;
    if (sink->callbacks == nullptr) {
        free(sink);
        return nullptr;
    }
    return sink;
}

int log_sink_destroy(log_sink_t* sink) {
    if (sink == nullptr) {
        return 0;
    }
    if (sink->stream != nullptr && sink->ownsStream != 0) {
        fclose(sink->stream);
    }
    setFileTexts(sink, nullptr, nullptr);
    delete sink->callbacks;
    free(sink);
    return 0;
}

int log_sink_set_outputs(log_sink_t* sink, uint32_t outputs) {
    return setField(sink, &log_sink_t::outputs, outputs);
}

int log_sink_get_outputs(const log_sink_t* sink, uint32_t* outputs) {
    return getField(sink, &log_sink_t::outputs, outputs);
}

int log_sink_set_level(log_sink_t* sink, uint32_t level) {
    return setField(sink, &log_sink_t::level, level);
}

int log_sink_get_level(const log_sink_t* sink, uint32_t* level) {
    return getField(sink, &log_sink_t::level, level);
}

int log_sink_set_level_mask(log_sink_t* sink, uint32_t levelMask) {
    return setField(sink, &log_sink_t::levelMask, levelMask);
}

int log_sink_get_level_mask(const log_sink_t* sink, uint32_t* levelMask) {
    return getField(sink, &log_sink_t::levelMask, levelMask);
}

int log_sink_set_category_mask(log_sink_t* sink, uint32_t categoryMask) {
    return setField(sink, &log_sink_t::categoryMask, categoryMask);
}

int log_sink_get_category_mask(const log_sink_t* sink, uint32_t* categoryMask) {
    return getField(sink, &log_sink_t::categoryMask, categoryMask);
}

int log_sink_open_file(log_sink_t* sink, const char* path, const char* mode) {
    if (sink == nullptr || path == nullptr || mode == nullptr) {
        return 1;
    }
    // Copied before the old texts go: the arguments may be those of log_sink_get_file.
    char* const pathCopy = strdup(path);
    char* const modeCopy = strdup(mode);
    setFileTexts(sink, pathCopy, modeCopy);
    const bool copied = pathCopy != nullptr && modeCopy != nullptr;
    sink->stream = copied ? fopen(pathCopy, modeCopy) : nullptr;
    if (sink->stream == nullptr) {
        return 1;
    }
    sink->ownsStream = 1;
    return 0;
}

int log_sink_close_file(log_sink_t* sink) {
    if (sink == nullptr) {
        return 1;
    }
    if (sink->stream != nullptr) {
        fclose(sink->stream);
        sink->stream = nullptr;
    }
    setFileTexts(sink, nullptr, nullptr);
    sink->ownsStream = 0;
    return 0;
}

int log_sink_attach_stream(log_sink_t* sink, FILE* stream) {
    if (sink == nullptr) {
        return 1;
    }
    if (sink->stream != nullptr) {
        log_sink_close_file(sink);
    }
    sink->stream = stream;
    sink->ownsStream = 0;
    return 0;
}

int log_sink_get_file(const log_sink_t* sink, char** path, char** mode) {
    if (sink == nullptr) {
        return 1;
    }
    if (path != nullptr) {
        *path = sink->path;
    }
    if (mode != nullptr) {
        *mode = sink->mode;
    }
    return 0;
}

int log_sink_get_stream(const log_sink_t* sink, FILE** stream) {
    if (sink == nullptr || stream == nullptr) {
        return 1;
    }
    *stream = sink->stream;
    return 0;
}

int log_sink_flush(log_sink_t* sink) {
    if (sink == nullptr) {
        return 1;
    }
    if (sink->stream != nullptr) {
        fflush(sink->stream);
    }
    return 0;
}

int log_sink_add_callback(log_sink_t* sink, log_callback_t callback) {
    if (!hasCallbacks(sink)) {
        return 1;
    }
    auto& entries = sink->callbacks->entries;
    if (std::find(entries.begin(), entries.end(), callback) != entries.end()) {
        return 0;
    }
    try {
        entries.push_back(callback);
    } catch (const std::bad_alloc&) {
        return 1;
    }
    return 0;
}

int log_sink_remove_callback(log_sink_t* sink, log_callback_t callback) {
    if (!hasCallbacks(sink)) {
        return 1;
    }
    auto& entries = sink->callbacks->entries;
    if (const auto found = std::find(entries.begin(), entries.end(), callback);
        found != entries.end()) {
        entries.erase(found);
    }
    return 0;
}

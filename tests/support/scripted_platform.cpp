#include "tests/support/scripted_platform.h"

#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>

#include <mediacheckd/platform/csi.h>
#include <mediacheckd/platform/debug_level.h>
#include <mediacheckd/platform/vxipc.h>

namespace scripted {

Platform platform;

void reset() {
    platform = {};
    g_debug_level = 0;
}

void Platform::then(const Exchange& exchange, int times) {
    exchanges.insert(exchanges.end(), static_cast<size_t>(times), exchange);
}

bool Platform::logged(const std::string& text) const {
    return std::any_of(logs.begin(), logs.end(),
                       [&](const auto& line) { return line.find(text) != std::string::npos; });
}

Bytes words(std::initializer_list<uint32_t> values) {
    Bytes bytes;
    for (uint32_t value : values) {
        putWord(bytes, bytes.size(), value);
    }
    return bytes;
}

void putWord(Bytes& bytes, size_t offset, uint32_t value) {
    bytes.resize(std::max(bytes.size(), offset + 4));
    for (size_t i = 0; i < 4; ++i) {
        bytes[offset + i] = static_cast<uint8_t>(value >> (8 * i));
    }
}

uint32_t wordAt(const Bytes& bytes, size_t offset) {
    uint32_t value = 0;
    for (size_t i = 0; i < 4; ++i) {
        value |= static_cast<uint32_t>(bytes.at(offset + i)) << (8 * i);
    }
    return value;
}

void append(Bytes& bytes, const Bytes& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

}  // namespace scripted

using scripted::platform;

uint32_t g_debug_level = 0;

int vxIpcInit(const char* channel, vxIpcEndpoint*) {
    platform.channels.emplace_back(channel);
    int result = 0;
    if (!platform.initResults.empty()) {
        result = platform.initResults.front();
        platform.initResults.pop_front();
    }
    platform.opened += result >= 0;
    return result;
}

int vxIpcSend(vxIpcEndpoint*, const void* message, int length) {
    const auto* bytes = static_cast<const uint8_t*>(message);
    platform.requests.emplace_back(bytes, bytes + length);
    if (!platform.exchanges.empty()) {
        platform.current = platform.exchanges.front();
        platform.exchanges.pop_front();
    } else if (platform.answer) {
        platform.current = platform.answer(platform.requests.back());
    } else {
        platform.current = scripted::sendFails();
    }
    return platform.current.sendResult;
}

int vxIpcReceive(vxIpcEndpoint*, void* buffer, int size) {
    scripted::Exchange& current = platform.current;
    if (current.replies.empty()) {
        return current.receiveResult;
    }
    const scripted::Bytes message = current.replies.front();
    current.replies.pop_front();
    if (message.size() > static_cast<size_t>(size)) {
        return -1;
    }
    std::ranges::copy(message, static_cast<uint8_t*>(buffer));
    return static_cast<int>(message.size());
}

void vxIpcDestroy(vxIpcEndpoint*) {
    ++platform.closed;
}

int csi_get(int key, uint32_t bufferSize, uint32_t* lengthOut, void* buffer) {
    return platform.setting ? platform.setting(key, bufferSize, lengthOut, buffer) : -1;
}

// The two calls of the C library that a test must not make for real.

int usleep(useconds_t microseconds) {
    platform.pauses.push_back(microseconds);
    return 0;
}

void syslog(int priority, const char* format, ...) {
    char line[2048];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    platform.logs.push_back("<" + std::to_string(priority) + ">" + line);
}

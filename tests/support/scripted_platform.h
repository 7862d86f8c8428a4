// The camera's closed libraries as a script: a test says what each send, receive and setting gives
// and reads what the code under test did. Linked in place of platform_host.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

namespace scripted {

using Bytes = std::vector<uint8_t>;

// What one send, and the receives after it, give.
struct Exchange {
    int sendResult = 0;  // negative: the send fails and no receive follows
    std::deque<Bytes> replies = {};
    int receiveResult = -1;  // given when the replies have been received
};

inline Exchange reply(Bytes bytes) {
    return {.replies = {std::move(bytes)}};
}
inline Exchange sendFails(int result = -1) {
    return {.sendResult = result};
}
inline Exchange receiveFails(int result = -1) {
    return {.receiveResult = result};
}

// The state of the one scripted platform. A test starts with reset().
struct Platform {
    // The script. When it is used up, answer is asked; without one every send fails.
    std::deque<Exchange> exchanges;
    std::function<Exchange(const Bytes& request)> answer;
    Exchange current;             // the last one taken from the script
    std::deque<int> initResults;  // of the next vxIpcInit calls; 0 when used up
    std::function<int(int key, uint32_t bufferSize, uint32_t* lengthOut, void* buffer)> setting;

    std::vector<Bytes> requests;        // every request sent, failed sends included
    std::vector<std::string> channels;  // of every vxIpcInit
    int opened = 0;
    int closed = 0;
    std::vector<unsigned> pauses;   // microseconds of every usleep
    std::vector<std::string> logs;  // every line sent to the system log, after its <priority>

    void then(const Exchange& exchange, int times = 1);
    bool logged(const std::string& text) const;  // some line contains the text
};

extern Platform platform;
void reset();

// Little-endian words, one after the other.
Bytes words(std::initializer_list<uint32_t> values);
// Puts a word at an offset, growing the bytes when needed.
void putWord(Bytes& bytes, size_t offset, uint32_t value);
uint32_t wordAt(const Bytes& bytes, size_t offset);
void append(Bytes& bytes, const Bytes& more);

}  // namespace scripted

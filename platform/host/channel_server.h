// The serving side of channels: any number of channels and connections in one loop.
#pragma once

#include <poll.h>
#include <sys/un.h>

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host/unique_fd.h"

namespace host {

using Message = std::vector<std::byte>;

// What a request is answered with.
struct Reply {
    std::vector<Message> messages = {};
    std::chrono::milliseconds delay{0};  // before the first message
    bool close = false;                  // the connection is closed after the last message
};

// Turns the bytes of one request into its reply.
using RequestHandler = std::function<Reply(std::span<const std::byte> request)>;

class ChannelServer {
  public:
    ChannelServer() = default;
    ~ChannelServer();
    ChannelServer(const ChannelServer&) = delete;
    ChannelServer& operator=(const ChannelServer&) = delete;

    // Opens the channel: makes the folder where it is missing, takes the place of a socket that
    // nobody listens on. Requests are answered from run() on; the socket goes with this object.
    // Throws std::runtime_error, whose text names the channel's path and the reason, when the
    // name is no channel name, the place is not to be trusted or somebody serves the channel.
    void open(std::string_view channel, RequestHandler handler);

    // Serves every open channel until stop becomes readable. A connection's next request is read
    // when the reply to the one before has gone out. Where the system has no descriptor left for a
    // client, it waits and is accepted later; so it does beyond 500 connections.
    // Throws std::system_error when the system gives no way to wait.
    void run(int stop);

  private:
    using Clock = std::chrono::steady_clock;

    struct Channel {
        UniqueFd listener;
        sockaddr_un address;
        RequestHandler handler;
    };

    struct Connection {
        UniqueFd socket;
        const RequestHandler* handler;
        std::deque<Message> outgoing = {};
        Clock::time_point due = {};  // nothing goes out before
        bool closing = false;        // closed once outgoing is empty
    };

    int collectEvents(int stop, std::vector<pollfd>& polled) const;
    void acceptFrom(const Channel& channel);
    static bool serve(Connection& connection, short events);
    static bool receiveRequest(Connection& connection);
    static bool sendReplies(Connection& connection);

    std::list<Channel> mChannels;
    std::list<Connection> mConnections;
    Clock::time_point mAcceptFrom = {};  // no client is accepted before
};

}  // namespace host

// A channel served by a thread of the test, at the real sockets.
#pragma once

#include <sys/eventfd.h>

#include <string_view>
#include <thread>
#include <utility>

#include "platform/host/channel_server.h"

class ChannelThread {
  public:
    ChannelThread(std::string_view channel, host::RequestHandler handler)
        : mStop(eventfd(0, EFD_CLOEXEC)) {
        mServer.open(channel, std::move(handler));
        mThread = std::thread([this] { mServer.run(mStop.get()); });
    }
    ~ChannelThread() {
        eventfd_write(mStop.get(), 1);
        mThread.join();
    }

  private:
    host::UniqueFd mStop;
    host::ChannelServer mServer;
    std::thread mThread;
};

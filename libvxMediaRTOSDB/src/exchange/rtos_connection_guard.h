// A connection to the media database that closes itself when the query that opened it ends.
#pragma once

#include <mediacheckd/vxMediaRTOSDB/rtos_connection.h>

class RtosConnectionGuard {
  public:
    RtosConnectionGuard() : mResult(rtosConnectionCtor(&mConnection)) {}
    ~RtosConnectionGuard() { close(); }
    RtosConnectionGuard(const RtosConnectionGuard&) = delete;
    RtosConnectionGuard& operator=(const RtosConnectionGuard&) = delete;

    // The result of opening it: negative when there is no connection.
    [[nodiscard]] int result() const { return mResult; }

    [[nodiscard]] rtosConnection* get() { return &mConnection; }

    // Closes it before the end of the scope; a second call does nothing.
    void close() {
        if (mOpen) {
            rtosConnectionDtor(&mConnection);
        }
        mOpen = false;
    }

  private:
    rtosConnection mConnection;
    int mResult;
    bool mOpen = mResult >= 0;
};

#pragma once

#include <curl/curl.h>

#include <chrono>

namespace kelvane::cal {

// Drives a libcurl multi handle from the sockets that are ready (epoll) and
// libcurl's own timer, so that each wake-up only touches the transfer it
// concerns instead of polling every socket in turn.
class CurlEvents {
  public:
    explicit CurlEvents(CURLM* multi);
    ~CurlEvents();
    CurlEvents(const CurlEvents&) = delete;
    CurlEvents& operator=(const CurlEvents&) = delete;

    // Waits until a socket is ready or the timer runs out, and lets libcurl
    // act on what happened.
    void WaitAndAct();

  private:
    static int OnSocket(CURL* easy, curl_socket_t socket, int what, void* self, void* known);
    static int OnTimer(CURLM* multi, long milliseconds, void* self);
    int MillisecondsLeft() const;
    void TimerRanOut();

    CURLM* multi_;
    int epoll_;
    bool timerSet_ = false;
    std::chrono::steady_clock::time_point deadline_;
};

}  // namespace kelvane::cal

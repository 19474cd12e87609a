#pragma once

#include <curl/curl.h>
#include <poll.h>

#include <chrono>
#include <vector>

namespace kelvane::cal {

// Drives a libcurl multi handle from the sockets that are ready and
// libcurl's own timer, so that each wake-up only touches the transfer it
// concerns instead of polling every socket in turn. The few sockets are kept
// here, so that libcurl's changes to them cost no system call.
class CurlEvents {
  public:
    explicit CurlEvents(CURLM* multi);
    CurlEvents(const CurlEvents&) = delete;
    CurlEvents& operator=(const CurlEvents&) = delete;

    // Waits until a socket is ready or the timer runs out, and lets libcurl
    // act on what happened.
    void WaitAndAct();

  private:
    static int OnSocket(CURL* easy, curl_socket_t socket, int what, void* self, void* known);
    static int OnTimer(CURLM* multi, long milliseconds, void* self);
    void Watch(curl_socket_t socket, int what);
    int MillisecondsLeft() const;

    CURLM* multi_;
    std::vector<pollfd> watched_;
    std::vector<pollfd> ready_;  // a copy of watched_ for one wait
    bool timerSet_ = false;
    std::chrono::steady_clock::time_point deadline_;
};

}  // namespace kelvane::cal

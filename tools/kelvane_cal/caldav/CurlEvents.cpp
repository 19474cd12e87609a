#include "kelvane_cal/caldav/CurlEvents.h"

#include <sys/epoll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace kelvane::cal {

namespace {

// The longest wait without looking again, in case a wake-up is missed.
constexpr int kLongestWait = 1000;
constexpr int kMostEvents = 16;

// What libcurl wants to hear of a socket, as epoll's flags.
unsigned EpollFlags(int what) {
    unsigned flags = 0;
    if (what == CURL_POLL_IN || what == CURL_POLL_INOUT) {
        flags |= EPOLLIN;
    }
    if (what == CURL_POLL_OUT || what == CURL_POLL_INOUT) {
        flags |= EPOLLOUT;
    }
    return flags;
}

// What epoll saw on a socket, as libcurl's flags.
int CurlFlags(unsigned events) {
    int flags = 0;
    flags |= (events & EPOLLIN) != 0 ? CURL_CSELECT_IN : 0;
    flags |= (events & EPOLLOUT) != 0 ? CURL_CSELECT_OUT : 0;
    flags |= (events & (EPOLLERR | EPOLLHUP)) != 0 ? CURL_CSELECT_ERR : 0;
    return flags;
}

}  // namespace

CurlEvents::CurlEvents(CURLM* multi) : multi_(multi), epoll_(epoll_create1(EPOLL_CLOEXEC)) {
    curl_multi_setopt(multi_, CURLMOPT_SOCKETFUNCTION, &CurlEvents::OnSocket);
    curl_multi_setopt(multi_, CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(multi_, CURLMOPT_TIMERFUNCTION, &CurlEvents::OnTimer);
    curl_multi_setopt(multi_, CURLMOPT_TIMERDATA, this);
}

// The multi handle is cleaned up first, while its callbacks may still come.
CurlEvents::~CurlEvents() {
    if (epoll_ >= 0) {
        ::close(epoll_);
    }
}

int CurlEvents::OnSocket(CURL*, curl_socket_t socket, int what, void* self, void*) {
    const int epoll = static_cast<CurlEvents*>(self)->epoll_;
    if (what == CURL_POLL_REMOVE) {
        epoll_ctl(epoll, EPOLL_CTL_DEL, socket, nullptr);
        return 0;
    }
    epoll_event event{};
    event.events = EpollFlags(what);
    event.data.fd = socket;
    if (epoll_ctl(epoll, EPOLL_CTL_MOD, socket, &event) != 0 && errno == ENOENT) {
        epoll_ctl(epoll, EPOLL_CTL_ADD, socket, &event);
    }
    return 0;
}

int CurlEvents::OnTimer(CURLM*, long milliseconds, void* self) {
    auto* events = static_cast<CurlEvents*>(self);
    events->timerSet_ = milliseconds >= 0;
    events->deadline_ = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    return 0;
}

int CurlEvents::MillisecondsLeft() const {
    if (!timerSet_) {
        return kLongestWait;
    }
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline_ - std::chrono::steady_clock::now());
    return static_cast<int>(std::clamp<long long>(left.count(), 0, kLongestWait));
}

void CurlEvents::TimerRanOut() {
    timerSet_ = false;
    int running = 0;
    curl_multi_socket_action(multi_, CURL_SOCKET_TIMEOUT, 0, &running);
}

void CurlEvents::WaitAndAct() {
    const int wait = MillisecondsLeft();
    epoll_event ready[kMostEvents];
    const int count = wait == 0 ? 0 : epoll_wait(epoll_, ready, kMostEvents, wait);
    int running = 0;
    for (int index = 0; index < count; ++index) {
        curl_multi_socket_action(multi_, ready[index].data.fd, CurlFlags(ready[index].events),
                                 &running);
    }
    if (timerSet_ && MillisecondsLeft() == 0) {
        TimerRanOut();
    }
}

}  // namespace kelvane::cal
